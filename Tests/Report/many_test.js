"use strict";
// Measures the page of a report on 10,000 models: how large it is, and how long a reader waits.

const assert = require("node:assert/strict");
const fs = require("node:fs");
const { test, before, after } = require("node:test");
const browsing = require("./browser.js");

const mostBytes = 15e6;
const longestOpening = 2000; // milliseconds
const longestAnswer = 1000;
const repetitions = 5;

let browser;
before(async () => { browser = await browsing.start(); });
after(() => browser.close());

/** Does something several times, prints the times and returns their median. */
async function measure(title, run) {
    const times = [];
    for (let i = 0; i < repetitions; ++i) times.push(await run());
    times.sort((a, b) => a - b);
    const median = times[Math.floor(repetitions / 2)];
    console.log(`${title}: ${Math.round(median)} ms (${Math.round(times[0])} to ${Math.round(times.at(-1))})`);
    return median;
}

/** Returns how long the page takes for something until it has been painted. */
function timeInPage(page, action, argument) {
    return page.evaluate(`new Promise((resolve) => {
        const start = performance.now();
        (${action})(${JSON.stringify(argument)});
        requestAnimationFrame(() => setTimeout(() => resolve(performance.now() - start)));
    })`);
}

test("is not too large", () => {
    const { size } = fs.statSync(browsing.page);
    console.log(`${browsing.readLines("report.jsonl").length - 1} models: ${(size / 1e6).toFixed(2)} MB`);
    assert.ok(size <= mostBytes);
});

test("opens soon", async () => {
    const median = await measure("to open", async () => {
        const { page, context, faults } = await browsing.open(browser);
        // From the click on the file to the picture.
        const time = await page.evaluate(() => new Promise((resolve) =>
            requestAnimationFrame(() => setTimeout(() => resolve(performance.now())))));
        assert.ok(await page.locator("#models tbody tr").count() > 0);
        assert.deepEqual(faults, []);
        await context.close();
        return time;
    });
    assert.ok(median <= longestOpening);
});

const actions = [
    ["to find a model", (i) => change({ text: `model 0${7000 + i}` })],
    ["to find an item", (i) => change({ text: `leather_${i % 9}` })],
    ["to show all again", () => change({ text: "" })],
    ["to sort", () => sortBy("missing")],
    ["to unfold all", () => change({ isFolded: false, folds: new Map() })],
    ["to list all by what is missing", (i) => change({ isInFolders: false, isDescending: i % 2 === 0 })],
    ["to count one family less", (i) => document.querySelectorAll("#families input")[i % 4].click()],
    ["to list the paths of all missing files", () => models.forEach((model) => forEachMissing(model, () => {}))],
];

test("answers soon", async () => {
    const { page, context, faults } = await browsing.open(browser);
    for (const [title, action] of actions) {
        let i = 0;
        const median = await measure(title, () => timeInPage(page, action, i++));
        assert.ok(median <= longestAnswer, title);
    }
    assert.deepEqual(faults, []);
    await context.close();
});

test("has every row on paper", async () => {
    const { page, context } = await browsing.open(browser);
    const count = browsing.readLines("report.jsonl").length - 1;
    await page.uncheck("#folders");
    await measure("to make all rows", () => timeInPage(page, () => dispatchEvent(new Event("beforeprint"))));
    assert.equal(await page.locator("#models > tbody > .model").count(), count);
    await context.close();
});
