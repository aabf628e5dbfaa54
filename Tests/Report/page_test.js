"use strict";
// Tests the page of a report on the library that write_models.py writes.

const assert = require("node:assert/strict");
const fs = require("node:fs");
const path = require("node:path");
const { test, before, after, beforeEach, afterEach } = require("node:test");
const axe = require("axe-core");
const browsing = require("./browser.js");

const lines = browsing.readLines("report.jsonl");
const { total } = lines.pop();
const models = new Map(lines.map((line) => [browsing.show(line.model), line]));
const families = ["PVRTC", "ETC", "ASTC", "DXT"];
const kinds = ["texture", "cubemap", "lightmap"];
const widths = [360, 768, 1280];
const pictures = process.env.ZEK_PICTURES;

let browser;
let page;
let context;
let faults;

before(async () => { browser = await browsing.start(); });
after(() => browser.close());
beforeEach(async () => { ({ page, context, faults } = await browsing.open(browser)); });
afterEach(async () => {
    const isPwned = await page.evaluate(() => "pwned" in window);
    await context.close();
    assert.deepEqual(faults, []);
    assert.equal(isPwned, false);
});

// ---- What the page shows

function format(number) {
    return number.toLocaleString("en");
}

/** Shows the models as a list, all of them, and returns their rows: cells by their columns, and the path. */
async function readRows() {
    await page.uncheck("#folders");
    return readShownRows();
}

function readShownRows() {
    return page.evaluate(() => {
        while (document.querySelector("#models > tbody > .more button")) document.querySelector("#models > tbody > .more button").click();
        return Array.from(document.querySelectorAll("#models > tbody > .model"), (row) => {
            const { model } = row.entry;
            return { path: model.folder + model.name, label: row.querySelector("button").textContent,
                words: Array.from(row.querySelectorAll(".word"), (word) => word.textContent),
                cells: Array.from(row.cells, (cell) => cell.textContent) };
        });
    });
}

function getPaths(rows) {
    return rows.map((row) => row.path);
}

function getItems(line) {
    return line.counts ? kinds.reduce((sum, kind) => sum + line.counts[kind].items, 0) : 0;
}

function getThere(line, family) {
    return line.counts ? kinds.reduce((sum, kind) => sum + line.counts[kind].variants[family], 0) : 0;
}

function getMissing(line) {
    return families.reduce((sum, family) => sum + getItems(line) - getThere(line, family), 0);
}

function sortPaths(paths) {
    return [...paths].sort();
}

function describeBar(there, items) {
    return items === 0 ? "none" : `${format(there)} of ${format(items)}`;
}

test("has the numbers that --json has", async () => {
    const numbers = await page.locator("#totals dd").allTextContents();
    assert.deepEqual(numbers, [total.models, total.refused, total.stale, getItems(total), getMissing(total)].map(format));
    for (const [row, family] of families.entries()) {
        const cells = await page.locator(`#coverage tbody tr:nth-child(${row + 1}) > *`).allTextContents();
        assert.deepEqual(cells, [family, ...kinds.map((kind) => describeBar(total.counts[kind].variants[family], total.counts[kind].items))]);
    }
});

test("names the time of the run, whatever becomes of the file", async () => {
    const { atime, mtime } = fs.statSync(browsing.page);
    fs.utimesSync(browsing.page, atime, new Date(0));
    await page.reload();
    fs.utimesSync(browsing.page, atime, mtime);
    const { time, shown } = await page.evaluate(() => ({ time: data.time, shown: new Date(data.time).toLocaleString() }));
    const longest = 600_000; // milliseconds
    assert.ok(Math.abs(Date.parse(time) - mtime) < longest, time);
    assert.ok((await page.locator("#written").textContent()).startsWith(`As of ${shown}. `));
});

test("has a row for each model, with its numbers", async () => {
    const rows = await readRows();
    assert.deepEqual(sortPaths(getPaths(rows)), sortPaths(models.keys()));
    for (const { path: name, words, cells } of rows) {
        const line = models.get(name);
        const isRefused = line.outcome === "refused";
        assert.deepEqual(words, isRefused ? ["refused"] : line.stale ? ["stale"] : [], name);
        assert.equal(cells[1], isRefused ? "" : String(line.version), name);
        assert.deepEqual(cells.slice(3, 9), isRefused ? Array(6).fill("") : [format(getItems(line)),
            ...families.map((family) => describeBar(getThere(line, family), getItems(line))), format(getMissing(line))], name);
        const [errors, warnings] = ["error", "warning"].map((word) => Number(new RegExp(`(\\d+) ${word}`).exec(cells[9])?.[1] ?? 0));
        assert.deepEqual([errors, warnings], [line.errors, line.warnings], name);
    }
});

test("has what check finds, and a table has it, too", () => {
    const checked = browsing.readLines("check.jsonl");
    assert.equal(checked.length, models.size);
    for (const { model, errors, warnings, findings } of checked) {
        const line = models.get(browsing.show(model));
        const codes = {};
        for (const { code } of findings) codes[code] = (codes[code] ?? 0) + 1;
        assert.deepEqual({ codes: line.codes, errors: line.errors, warnings: line.warnings }, { codes, errors, warnings });
    }
    const [header, ...rows] = fs.readFileSync(path.join(browsing.folder, "report.csv"), "utf8").trimEnd().split("\n").map(readCsv);
    assert.deepEqual(rows.map((row) => row[0]), Array.from(models.keys()));
    for (const row of rows) {
        const values = Object.fromEntries(header.map((name, i) => [name, row[i]]));
        const line = models.get(values.model);
        assert.equal(row.length, header.length);
        assert.equal(values.outcome, line.outcome);
        assert.equal(values.stale, line.stale ? "yes" : "no");
        assert.equal(values.codes, Object.keys(line.codes).sort((a, b) => values.codes.indexOf(a) - values.codes.indexOf(b)).join(" "));
        assert.deepEqual([values.errors, values.warnings, values.missing].map(Number), [line.errors, line.warnings, getMissing(line)]);
        for (const kind of kinds) {
            assert.equal(Number(values[`${kind}s`]), line.counts?.[kind].items ?? 0);
            for (const family of families) assert.equal(Number(values[`${kind}s ${family}`]), line.counts?.[kind].variants[family] ?? 0);
        }
    }
});

/** Returns the fields of a line of comma-separated values. */
function readCsv(line) {
    return Array.from(line.matchAll(/(?:^|,)(?:"((?:[^"]|"")*)"|([^",]*))/g), ([, quoted, plain]) => quoted?.replaceAll('""', '"') ?? plain);
}

test("says where to start", async () => {
    const start = await page.locator("#start").textContent();
    assert.match(start, new RegExp(`${total.refused} models are refused`));
    assert.match(start, new RegExp(`${total.stale} models are stale: run zek mark`));
    const first = page.locator("#start ul li").first();
    assert.match(await first.textContent(), /^models\/hostile\/names\/ 8,\d+ of 8,\d+ \(PVRTC 2,/);
    await first.locator("button").click();
    const paths = getPaths(await readShownRows());
    assert.deepEqual(sortPaths(paths), sortPaths([...models.keys()].filter((name) => name.includes("hostile/names/"))));
    assert.match(paths[0], /many\.zek$/, "the one that lacks most");
    await page.locator("#start li", { hasText: "refused" }).locator("button").click();
    assert.equal((await readShownRows()).length, total.refused);
});

// ---- What a reader can do

test("sorts by every column, both ways", async () => {
    await page.uncheck("#folders");
    const values = {
        name: (line, name) => name, version: (line) => line.version ?? 0, size: (line) => line.size ?? 0,
        items: getItems, missing: getMissing, findings: (line) => line.errors * 1e9 + line.warnings,
    };
    families.forEach((family, i) => { values[`family-${i}`] = (line) => getItems(line) - getThere(line, family); });
    const keys = await page.locator("#models thead [data-key]").evaluateAll((buttons) => buttons.map((button) => button.dataset.key));
    assert.deepEqual(Object.keys(values).sort(), keys.sort());
    for (const [key, getValue] of Object.entries(values)) {
        const sorted = {};
        for (let i = 0; i < 2; ++i) {
            await page.locator(`#models thead [data-key="${key}"]`).click();
            const direction = await page.locator("#models thead th", { has: page.locator(`[data-key="${key}"]`) }).getAttribute("aria-sort");
            assert.equal(await page.locator("#models thead th:not([aria-sort=none])").count(), 1);
            sorted[direction] = getPaths(await readShownRows()).map((name) => getValue(models.get(name), name));
        }
        const compare = (a, b) => (a < b ? -1 : a > b ? 1 : 0);
        assert.deepEqual(sorted.ascending, [...sorted.ascending].sort(compare), key);
        assert.deepEqual(sorted.descending, [...sorted.ascending].sort((a, b) => compare(b, a)), key);
        assert.ok(new Set(sorted.ascending).size > 1, `${key} tells nothing apart`);
    }
});

/** Checks that the list has those models that a test is true of, and some but not all. */
async function expectShown(isExpected) {
    const expected = sortPaths([...models].filter(([name, line]) => isExpected(line, name)).map(([name]) => name));
    assert.ok(expected.length > 0 && expected.length < models.size);
    await page.waitForFunction((start) => document.getElementById("shown").textContent.startsWith(start), `${expected.length} of ${models.size} models`);
    assert.deepEqual(sortPaths(getPaths(await readShownRows())), expected);
}

test("filters by text: paths and items", async () => {
    await page.uncheck("#folders");
    await page.fill("#text", "ROOMS/");
    await expectShown((line, name) => name.includes("rooms/"));
    await page.fill("#text", "<script>window.pwned");
    await expectShown((line, name) => /script\/|<_?script|<script/.test(name) && !name.includes("\\u003c"));
    await page.fill("#text", "texture 1999");
    await expectShown((line, name) => name.endsWith("many.zek"));
    await page.fill("#text", "no such thing");
    await page.waitForFunction(() => document.getElementById("shown").textContent.startsWith("0 of"));
    assert.equal(await page.locator("#models tbody tr").count(), 0);
});

test("filters by state, family and finding", async () => {
    await page.uncheck("#folders");
    await page.selectOption("#show", "stale");
    await expectShown((line) => line.stale);
    await page.selectOption("#show", "refused");
    await expectShown((line) => line.outcome === "refused");
    await page.selectOption("#show", "lacking");
    await expectShown((line) => getMissing(line) > 0);
    for (const family of ["PVRTC", "ETC", "ASTC"]) await page.uncheck(`#families label:has-text("${family}") input`);
    await expectShown((line) => getItems(line) > getThere(line, "DXT"));
    await page.selectOption("#show", "complete");
    await expectShown((line) => line.outcome === "read" && getItems(line) === getThere(line, "DXT"));
    await page.selectOption("#show", "all");
    await page.selectOption("#code", { label: "incomplete-cubemap (1 model)" });
    await expectShown((line) => line.codes["incomplete-cubemap"]);
    await page.selectOption("#code", { label: "flag-without-variant (2 models)" });
    await expectShown((line) => line.codes["flag-without-variant"]);
});

test("folds folders", async () => {
    const button = page.locator("#models .folder", { hasText: "rooms/" }).locator("button");
    const count = (await readShownRows()).length;
    assert.equal(count, models.size);
    assert.equal(await button.getAttribute("aria-expanded"), "true");
    await button.click();
    assert.equal(await button.getAttribute("aria-expanded"), "false");
    assert.equal((await readShownRows()).length, count - 3);
    assert.equal(await page.evaluate(() => document.activeElement.textContent), "rooms/");
    await button.click();
    assert.equal((await readShownRows()).length, count);
    await page.click("#fold");
    assert.equal((await readShownRows()).length, 0);
    await page.click("#unfold");
    assert.equal((await readShownRows()).length, count);
});

test("leaves models open and rows in their places when a folder is folded", async () => {
    await page.locator("#models .model", { hasText: "tower.zek" }).locator("button").click();
    assert.equal(await page.locator("#models .details").count(), 1);
    const button = page.locator("#models .folder", { hasText: "props/" }).locator("button");
    await button.scrollIntoViewIfNeeded();
    const place = (await button.boundingBox()).y;
    await button.click();
    assert.equal((await button.boundingBox()).y, place);
    assert.equal(await page.locator("#models .details").count(), 1);
    assert.equal(await page.locator("#models .model button[aria-expanded=true]").innerText(), "tower.zek");
});

test("sums up folders", async () => {
    const cells = await page.locator("#models .folder", { hasText: "rooms/" }).locator("th, td").allTextContents();
    const rooms = [...models].filter(([name]) => name.includes("rooms/")).map(([, line]) => line);
    const sum = (getValue) => rooms.reduce((before, line) => before + getValue(line), 0);
    assert.deepEqual(cells.slice(3, 9), [format(sum(getItems)),
        ...families.map((family) => describeBar(sum((line) => getThere(line, family)), sum(getItems))), format(sum(getMissing))]);
});

/** Shows one model alone and opens it. */
async function openModel(text) {
    await page.uncheck("#folders");
    await page.fill("#text", text);
    await page.waitForFunction(() => /^1 of/.test(document.getElementById("shown").textContent));
    const button = page.locator("#models .model > th button");
    if ((await button.getAttribute("aria-expanded")) === "false") await button.click();
    return page.locator("#models .details");
}

test("opens a model to its items and findings", async () => {
    const details = await openModel("tower.zek");
    const rows = await details.locator(".items tbody tr").allInnerTexts();
    assert.equal(rows.length, 4);
    assert.match(rows[0], /wall\.png[^]*missing[^]*tex_pvrtc\/000\.pvr[^]*there\s*flag 0[^]*tex_dxt\/000\.dds/);
    assert.match(rows[2], /tower[^]*5 of 6 files[^]*tex_reflection_cube_pvrtc\\tower\\reflection_cube_0\.pvr, 0 to 5/);
    assert.match(rows[3], /LightMap000\.png[^]*tex_dxt\/LightMap000\.dds/);
    const findings = await details.locator(".findings").innerText();
    assert.match(findings, /a cubemap lacks some of its faces \(incomplete-cubemap\)\s+A cubemap's variant counts only when all six faces are there\. What to do: make the missing faces\./);
    assert.match(findings, /probe 0 "tower": flags\[0\] at 0x\w+: PVRTC has 5 of 6 faces/);
    assert.match(findings, /texture 0 wall\.png, DXT: the flag is 0, and there is tex_dxt\/000\.dds/);
    assert.match(findings, /DXT: 1 of 2 textures/);
    await page.locator("#models .model button").click();
    assert.equal(await details.count(), 0);
});

test("tells what is refused and why", async () => {
    const details = await openModel("cut.zek");
    const text = await details.innerText();
    assert.ok(text.includes(`Refused: ${browsing.show([...models].find(([name]) => name.endsWith("cut.zek"))[1].error)}`));
    assert.match(text, /the file ends too early \(truncated\)|a name has no end \(unterminated-name\)/);
});

test("shows many items some at a time", async () => {
    const details = await openModel("many.zek");
    const items = details.locator(".items tbody tr");
    assert.equal(await items.count(), 101);
    await details.locator(".items .more button").click();
    assert.equal(await items.count(), 201);
});

async function readClipboard() {
    await page.waitForFunction(() => document.getElementById("copied").textContent !== "");
    return (await page.evaluate(() => navigator.clipboard.readText())).trimEnd().split("\n");
}

test("copies the paths of what is missing", async () => {
    await context.grantPermissions(["clipboard-read", "clipboard-write"]);
    const all = [...models.values()].flatMap((line) => line.missing ?? []).map(browsing.show);
    await page.click("#copy");
    assert.deepEqual(sortPaths(await readClipboard()), sortPaths(all));
    assert.match(await page.textContent("#copied"), new RegExp(`Copied ${format(all.length)} paths\\. \\d+ of them hold bytes that are no text`));
});

test("copies those of one model and one family", async () => {
    await context.grantPermissions(["clipboard-read", "clipboard-write"]);
    for (const family of ["ETC", "ASTC", "DXT"]) await page.uncheck(`#families label:has-text("${family}") input`);
    const details = await openModel("tower.zek");
    await details.getByText(/^Copy/).click();
    const expected = [...models].find(([name]) => name.endsWith("tower.zek"))[1].missing.map(browsing.show).filter((name) => name.includes("_pvrtc"));
    assert.equal(expected.length, 4, "two textures, a face and a lightmap");
    assert.deepEqual(sortPaths(await readClipboard()), sortPaths(expected));
});

test("shows the paths where a browser does not let it copy", async () => {
    await page.evaluate(() => { navigator.clipboard.writeText = () => Promise.reject(new Error("no")); });
    await page.click("#copy");
    const count = [...models.values()].reduce((sum, line) => sum + (line.missing?.length ?? 0), 0);
    assert.equal((await page.inputValue("#list-text")).trimEnd().split("\n").length, count);
    await page.keyboard.press("Escape");
    assert.equal(await page.locator("#list").isVisible(), false);
});

test("can be used by keyboard", async () => {
    await page.focus("#text");
    await page.keyboard.type("tower.zek");
    await page.waitForFunction(() => /^1 of/.test(document.getElementById("shown").textContent));
    for (let i = 0; i < 40 && !(await page.evaluate(() => document.activeElement.closest("#models tbody"))); ++i) await page.keyboard.press("Tab");
    await page.keyboard.press("Enter");
    assert.equal(await page.locator("#models .details").count(), 1);
    await page.keyboard.press("Tab");
    assert.match(await page.evaluate(() => document.activeElement.textContent), /^Copy the paths/);
    await page.focus('#models thead [data-key="missing"]');
    await page.keyboard.press("Enter");
    assert.equal(await page.evaluate(() => document.activeElement.dataset.key), "missing");
    assert.equal(await page.locator("#models thead th[aria-sort=descending]").innerText(), "Missing \u2193");
});

// ---- Names

test("takes names for text, whatever is in them", async () => {
    for (const line of lines) {
        if (!/names\/(?!many)/.test(browsing.show(line.model))) continue;
        await page.uncheck("#folders");
        await page.evaluate((name) => {
            const model = models.find((some) => some.folder + some.name === name);
            document.body.append(makeDetails(model));
        }, browsing.show(line.model));
    }
    assert.equal(await page.locator("img, iframe, script:not(head script, body > script)").count(), 0);
    const shown = new Set(await page.locator(".items bdi").allTextContents());
    const items = browsing.readLines("info.jsonl").filter(({ model }) => /names\/(?!many)/.test(browsing.show(model)))
        .flatMap(({ textures, cubemaps, lightmaps }) => [...textures, ...cubemaps, ...lightmaps]);
    assert.ok(items.length > 40);
    for (const { name } of items) assert.ok(shown.has(browsing.show(name)), browsing.show(name));
});

test("keeps within its width", async () => {
    for (const width of widths) {
        await page.setViewportSize({ width, height: 900 });
        for (const text of ["many.zek", "right to left", "names/long", "tower.zek"]) {
            await (await openModel(text)).waitFor();
            assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), `${width} ${text}`);
            // At one moment: the table is made anew when its width has changed.
            const [row, details, name] = await page.evaluate(() => [".model", ".details", ".model th"]
                .map((part) => document.querySelector(`#models ${part}`).getBoundingClientRect().width));
            assert.equal(row, details, "what a row opens to has no columns of its own");
            assert.ok(name >= 150, `${width} ${text}`);
        }
        await page.fill("#text", "");
        await page.waitForFunction(() => !/^1 of/.test(document.getElementById("shown").textContent));
        await page.check("#folders");
        assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth), String(width));
    }
});

// ---- For everybody

for (const colorScheme of ["light", "dark"]) {
    for (const width of widths) {
        test(`is accessible in ${colorScheme}, ${width} wide`, async () => {
            await page.emulateMedia({ colorScheme });
            await page.setViewportSize({ width, height: 900 });
            await page.screenshot({ path: `${pictures}/${colorScheme}-${width}.png`, fullPage: true });
            await expectAccessible();
            await openModel("tower.zek");
            await page.screenshot({ path: `${pictures}/${colorScheme}-${width}-open.png`, fullPage: true });
            await expectAccessible();
        });
    }
}

async function expectAccessible() {
    await page.evaluate(axe.source);
    const { violations, passes } = await page.evaluate(() => window.axe.run());
    assert.deepEqual(violations.map(({ id, nodes }) => [id, nodes.length, nodes[0].html, nodes[0].failureSummary]), []);
    assert.ok(passes.some(({ id }) => id === "color-contrast"));
}

test("can be printed, with all rows", async () => {
    await page.uncheck("#folders");
    await page.evaluate(() => addEventListener("afterprint", () => {
        window.printedRows = document.querySelectorAll("#models > tbody > .model").length;
    }));
    await page.pdf({ path: `${pictures}/print.pdf`, format: "A4" });
    assert.equal(await page.evaluate(() => window.printedRows), models.size);
    await page.emulateMedia({ media: "print" });
    assert.equal(await page.locator("#filters").isVisible(), false);
    await page.screenshot({ path: `${pictures}/print.png`, fullPage: true });
});
