// Makes readers of a format's description, in JavaScript and Python:
//
//     node compile.js DESCRIPTION FOLDER [--debug]
//
// With --debug their objects remember where each field lay, and read only when they are told to.

const fs = require('fs');
const path = require('path');
const KaitaiStructCompiler = require('kaitai-struct-compiler');
const yaml = require('js-yaml');

const [, , description, folder, option] = process.argv;

async function compile() {
  const format = yaml.load(fs.readFileSync(description, 'utf8'));
  for (const language of ['javascript', 'python']) {
    const files = await new KaitaiStructCompiler().compile(
      language, format, null, option === '--debug');
    for (const [name, text] of Object.entries(files))
      fs.writeFileSync(path.join(folder, name), text);
  }
}

compile().catch((error) => {
  console.error(`${description}: ${error.message || error}`);
  process.exit(1);
});
