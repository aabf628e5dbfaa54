// Prints what a generated reader finds in models, a line of JSON for each model: its fields, each as
// path, offset, size and list of values.
//
//     node list_fields.js FOLDER MODEL...
//
// The reader is FOLDER/Zek.js, made with --debug (see compile.js). Of a damaged model, what stands
// before the damage is printed.

const fs = require('fs');
const path = require('path');

const [, , folder, ...models] = process.argv;
const Zek = require(path.resolve(folder, 'Zek.js'));
const KaitaiStream = require('kaitai-struct/KaitaiStream');

// A reader puts an element into its list after reading it. Until then the parent shall know it.
function keepUnfinished(recordType) {
  const read = recordType.prototype._read;
  recordType.prototype._read = function () {
    this._parent.unfinished = this;
    read.call(this);
    this._parent.unfinished = undefined;
  };
}
Object.values(Zek).filter((member) => typeof member === 'function').forEach(keepUnfinished);

function listRecord(prefix, record, fields) {
  for (const [name, place] of Object.entries(record._debug)) {
    const value = record[name];
    if (Array.isArray(value))
      place.arr.forEach((elementPlace, i) =>
        listValue(`${prefix}${name}[${i}]`, elementPlace,
          i < value.length ? value[i] : record.unfinished, fields));
    else
      listValue(prefix + name, place, value, fields);
  }
}

function listValue(name, place, value, fields) {
  if (value && value._debug)
    listRecord(name + '.', value, fields);
  else if ('end' in place && value !== undefined) {
    const values = value instanceof Uint8Array ? Array.from(value) : [value];
    fields.push([name, place.start, place.end - place.start, values.map(makeShowable)]);
  }
}

// What is thrown for a text without an end is a text.
function isDamage(error) {
  return typeof error === 'string' || error instanceof KaitaiStream.EOFError ||
    error.name.startsWith('Validation');
}

// JSON.stringify makes null of infinities and NaN, and 0 of -0.
function makeShowable(number) {
  if (Object.is(number, -0))
    return '-0';
  return Number.isFinite(number) ? number : String(number);
}

function listModel(model) {
  const reader = new Zek(new KaitaiStream(new Uint8Array(fs.readFileSync(model)).buffer));
  try {
    reader._read();
  } catch (error) {
    if (!isDamage(error))
      throw error;
  }
  const fields = [];
  listRecord('', reader, fields);
  return fields;
}

for (const model of models)
  console.log(JSON.stringify(listModel(model)));
