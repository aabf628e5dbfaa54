"use strict";
// What the tests of the page share: the browser, and what zek printed of the same models.

const fs = require("node:fs");
const path = require("node:path");
const { pathToFileURL } = require("node:url");
const { chromium } = require("playwright-core");

/** The folder with report.html, report.jsonl, report.csv and check.jsonl. */
const folder = process.env.ZEK_REPORT_FOLDER;
const page = path.join(folder, "report.html");
const url = pathToFileURL(page).href;

function readLines(name) {
    return fs.readFileSync(path.join(folder, name), "utf8").trimEnd().split("\n").map((line) => JSON.parse(line));
}

/** Starts Debian's chromium. As root it has no sandbox to start in. */
function start() {
    return chromium.launch({ executablePath: "/usr/bin/chromium", args: process.getuid() === 0 ? ["--no-sandbox"] : [] });
}

/** Opens the page and returns it with everything that it should not have done. */
async function open(browser, options = {}) {
    const context = await browser.newContext({ viewport: { width: 1280, height: 900 }, ...options });
    const faults = [];
    const opened = await context.newPage();
    opened.on("console", (message) => faults.push(`console: ${message.text()}`));
    opened.on("pageerror", (error) => faults.push(`error: ${error}`));
    opened.on("dialog", (dialog) => faults.push(`dialog: ${dialog.message()}`));
    opened.on("request", (request) => request.url() !== url && !request.url().startsWith("data:") && faults.push(`request: ${request.url()}`));
    await opened.goto(url);
    return { page: opened, context, faults };
}

function isControl(code) {
    const ranges = [[0x00, 0x1f], [0x7f, 0x9f], [0x61c, 0x61c], [0x200e, 0x200f], [0x2028, 0x202e], [0x2066, 0x2069]];
    return ranges.some(([first, last]) => code >= first && code <= last);
}

function escapeBytes(bytes) {
    return Array.from(bytes, (byte) => `\\x${byte.toString(16).padStart(2, "0")}`).join("");
}

/** Returns a path or name of zek's JSON as it is shown: with what steers a line and wrong bytes escaped. */
function show(value) {
    if (value.text !== undefined)
        return Array.from(value.text, (c) => (isControl(c.codePointAt(0)) ? escapeBytes(Buffer.from(c)) : c)).join("");
    let text = "";
    for (let bytes = Buffer.from(value.bytes, "base64"); bytes.length > 0;) {
        const size = [1, 2, 3, 4].find((length) => Array.from(decode(bytes.subarray(0, length))).length === 1);
        text += size ? show({ text: decode(bytes.subarray(0, size)) }) : escapeBytes(bytes.subarray(0, 1));
        bytes = bytes.subarray(size ?? 1);
    }
    return text;
}

function decode(bytes) {
    try {
        return new TextDecoder("utf-8", { fatal: true, ignoreBOM: true }).decode(bytes);
    } catch {
        return "";
    }
}

module.exports = { folder, page, url, readLines, start, open, show };
