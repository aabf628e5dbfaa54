"use strict";

// The data is as CReportPage.cpp writes it. All of it is text, and becomes nothing else here.

const data = JSON.parse(document.getElementById("data").textContent);
const kindNames = ["texture", "cubemap", "lightmap"];
const kindTitles = ["Textures", "Cubemaps", "Lightmaps"];
const allFamilies = data.families.map((name, family) => family);
const flagFactor = 64; // a mark is a flag times this, and a bit for each file that is missing
const rowsAtOnce = 100;
const itemsAtOnce = 100;
const placesAtOnce = 10;
const longestName = 150;
const mostModelsUnfolded = 200;
const mostStarts = 5;

const state = {
    text: "",
    show: "all",
    code: -1,
    families: allFamilies,
    isInFolders: true,
    sortKey: "name",
    isDescending: false,
    isFolded: null, // all folders, or null for those below the first when there are many models
    folds: new Map(), // by path, where somebody has chosen
    opened: new Set(), // models
};

// ---- Elements

/** Makes an element with attributes, or properties of functions, and children; texts are texts. */
function make(tag, attributes, ...children) {
    const element = document.createElement(tag);
    for (const [name, value] of Object.entries(attributes ?? {})) {
        if (typeof value === "function") element.addEventListener(name, value);
        else if (value === true) element.setAttribute(name, "");
        else if (value !== false) element.setAttribute(name, value);
    }
    element.append(...children);
    return element;
}

function find(id) {
    return document.getElementById(id);
}

/** Makes the element of a name: isolated, whatever its direction is, and folded when it is long. */
function makeName(text) {
    const start = shorten(text);
    if (start === text) return make("bdi", {}, text);
    return make("details", {},
        make("summary", {}, make("bdi", {}, start), ` (${format(text.length)} characters)`),
        make("bdi", {}, text));
}

function makeWholePath(text) {
    return text.length <= longestName ? makePath(text) : [makeName(text)];
}

/** Makes the elements of a path, each part isolated from the others. */
function makePath(text) {
    return shorten(text).split(/(?<=\/)/).map((part) => make("bdi", {}, part));
}

function shorten(text) {
    if (text.length <= longestName) return text;
    const characters = Array.from(text.slice(0, longestName));
    return characters.slice(0, longestName / 2).join("") + "\u2026";
}

/** Appends the elements of entries up to an end, with a button for so many more if some are left. */
function appendSome(parent, entries, count, makeElements, wrapButton, start = 0, end = start + count) {
    entries.slice(start, end).forEach((entry, i) => parent.append(...[makeElements(entry, start + i)].flat()));
    const left = entries.length - end;
    if (left <= 0) return;
    const button = make("button", { type: "button", click: next }, `Show ${format(Math.min(count, left))} more of ${format(left)}`);
    const holder = wrapButton(button);
    function next(event) {
        const last = holder.previousElementSibling;
        holder.remove();
        appendSome(parent, entries, count, makeElements, wrapButton, end);
        // Whoever pressed the button by keyboard goes on where it was.
        if (event.isTrusted) last?.nextElementSibling?.querySelector("button, summary")?.focus();
    }
    parent.append(holder);
}

// ---- Words

function format(number) {
    return number.toLocaleString("en");
}

function count(number, one, several) {
    return `${format(number)} ${number === 1 ? one : several}`;
}

function formatSize(bytes) {
    const units = ["B", "KB", "MB", "GB", "TB"];
    let unit = 0;
    for (; bytes >= 1000 && unit < units.length - 1; ++unit) bytes /= 1000;
    return `${unit === 0 || bytes >= 100 ? Math.round(bytes) : bytes.toFixed(1)} ${units[unit]}`;
}

function formatFindings({ errors, warnings }) {
    return [errors && count(errors, "error", "errors"), warnings && count(warnings, "warning", "warnings")]
        .filter(Boolean).join(", ");
}

// ---- Models, and what they come to

function makeTally() {
    return { models: 0, refused: 0, stale: 0, size: 0, items: 0, errors: 0, warnings: 0,
        there: allFamilies.map(() => 0), files: allFamilies.map(() => 0) };
}

function addTally(sum, more) {
    for (const name of ["models", "refused", "stale", "size", "items", "errors", "warnings"])
        sum[name] += more[name];
    for (const family of allFamilies) {
        sum.there[family] += more.there[family];
        sum.files[family] += more.files[family];
    }
}

/** How many variants are missing of the families that count. */
function countMissing(tally) {
    return state.families.reduce((sum, family) => sum + tally.items - tally.there[family], 0);
}

/** How many files these are; a cubemap has six. */
function countFiles(tally) {
    return state.families.reduce((sum, family) => sum + tally.files[family], 0);
}

function countBits(bits) {
    let number = 0;
    for (; bits !== 0; bits &= bits - 1) ++number;
    return number;
}

function makeModel(folder, row) {
    const [name, refusal, version, size, isStale, errors, warnings, codes, findings, leftOut, ...kinds] = row;
    const tally = makeTally();
    Object.assign(tally, { models: 1, refused: refusal === "" ? 0 : 1, stale: isStale, size, errors, warnings });
    const model = { folder, name, refusal, version, tally, findings, leftOut, codes: new Map(), kinds: [] };
    for (let i = 0; i < codes.length; i += 2) model.codes.set(codes[i], codes[i + 1]);
    for (const [names, marks, stems] of kinds) {
        model.kinds.push({ names, marks, stems, there: allFamilies.map(() => 0) });
        countItems(model.kinds.at(-1), tally);
    }
    return model;
}

function countItems(kind, tally) {
    tally.items += kind.names.length;
    kind.marks.forEach((mark, i) => {
        const family = i % allFamilies.length;
        const missing = mark % flagFactor;
        kind.there[family] += missing === 0 ? 1 : 0;
        tally.there[family] += missing === 0 ? 1 : 0;
        tally.files[family] += missing === 0 ? 0 : countBits(missing);
    });
}

const models = data.folders.flatMap(([folder, ...rows]) => rows.map((row) => makeModel(folder, row)));
const total = makeTally();
for (const model of models) addTally(total, model.tally);

function getStem(model, kind, index) {
    if (kind === 0) return String(index).padStart(3, "0");
    return (kind === 1 ? model.kinds[kind].names : model.kinds[kind].stems)[index];
}

/** The path of a file of an item's variant, from the model's folder on. */
function getPath(model, kind, index, family, file) {
    const [start, end] = data.paths[kind][family][file];
    return start + getStem(model, kind, index) + end;
}

function forEachMissing(model, use) {
    model.kinds.forEach(({ marks }, kind) => marks.forEach((mark, i) => {
        const family = i % allFamilies.length;
        if (!state.families.includes(family)) return;
        for (let file = 0, bits = mark % flagFactor; bits !== 0; ++file, bits >>= 1)
            if (bits & 1) use(model.folder + getPath(model, kind, Math.floor(i / allFamilies.length), family, file));
    }));
}

// ---- Filters

function getSearchText(model) {
    model.searchText ??= [model.folder + model.name, ...model.kinds.flatMap((kind) => kind.names)]
        .join("\n").toLowerCase();
    return model.searchText;
}

const tests = {
    all: () => true,
    lacking: (model) => countMissing(model.tally) > 0,
    complete: (model) => model.refusal === "" && countMissing(model.tally) === 0,
    stale: (model) => model.tally.stale > 0,
    refused: (model) => model.refusal !== "",
};

function isShown(model) {
    return tests[state.show](model) && (state.code < 0 || model.codes.has(state.code))
        && (state.text === "" || getSearchText(model).includes(state.text));
}

function isFiltered() {
    return state.show !== "all" || state.code >= 0 || state.text !== "";
}

// ---- Folders, and the order of what is in them

function makeFolder(path, label) {
    return { path, label, folders: new Map(), models: [], tally: makeTally() };
}

/** Makes the tree of the folders of models, with what each comes to. */
function makeTree(shown) {
    const root = makeFolder("", "");
    for (const model of shown) {
        let folder = root;
        addTally(root.tally, model.tally);
        for (const label of model.folder.match(/[^/]*\//g) ?? []) {
            if (!folder.folders.has(label)) folder.folders.set(label, makeFolder(folder.path + label, label));
            folder = folder.folders.get(label);
            addTally(folder.tally, model.tally);
        }
        folder.models.push(model);
    }
    return root;
}

/** Returns what a folder is a row of: itself, the one folder that is in it, or its one model. */
function makeEntry(folder, label = folder.label) {
    if (folder.models.length === 0 && folder.folders.size === 1) {
        const [only] = folder.folders.values();
        return makeEntry(only, label + only.label);
    }
    if (folder.models.length === 1 && folder.folders.size === 0)
        return makeModelEntry(folder.models[0], label + folder.models[0].name);
    return { folder, label, tally: folder.tally, version: 0 };
}

function makeModelEntry(model, label) {
    return { model, label, tally: model.tally, version: model.version };
}

function getEntries(folder) {
    const entries = Array.from(folder.folders.values(), (inner) => makeEntry(inner));
    for (const model of folder.models) entries.push(makeModelEntry(model, model.name));
    return sortEntries(entries);
}

function sortEntries(entries) {
    const { sortedBy } = columns.find(({ key }) => key === state.sortKey);
    const sign = state.isDescending ? -1 : 1;
    const compare = (a, b) => (a < b ? -1 : a > b ? 1 : 0);
    return entries
        .map((entry) => [sortedBy(entry), entry])
        .sort((a, b) => sign * compare(a[0], b[0]) || compare(a[1].label, b[1].label))
        .map(([, entry]) => entry);
}

function isOpen(folder, depth, shownCount) {
    return state.folds.get(folder.path)
        ?? (state.isFolded === null ? depth === 0 || shownCount <= mostModelsUnfolded || isFiltered() : !state.isFolded);
}

/** Returns the rows of the table, each with its depth. */
function makeRows(shown) {
    if (!state.isInFolders)
        return sortEntries(shown.map((model) => makeModelEntry(model, model.folder + model.name)))
            .map((entry) => ({ ...entry, depth: 0 }));
    const rows = [];
    const append = (entries, depth) => {
        for (const entry of entries) {
            rows.push({ ...entry, depth });
            if (!entry.folder) continue;
            rows.at(-1).isOpen = isOpen(entry.folder, depth, shown.length);
            if (rows.at(-1).isOpen) append(getEntries(entry.folder), depth + 1);
        }
    };
    const root = makeTree(shown);
    const top = root.models.length > 0 || root.folders.size > 1 ? getEntries(root) : [makeEntry(root)];
    append(shown.length === 0 ? [] : top, 0);
    return rows;
}

// ---- The table of models

// What a column is sorted by, and what it shows of a folder or model.
const columns = [
    {
        key: "name", title: "Model", class: "",
        sortedBy: (entry) => entry.label,
        makeCell: makeNameCell,
    }, {
        key: "version", title: "Version", class: "number wide column-number",
        sortedBy: (entry) => entry.version,
        makeCell: (entry) => makeCell("number wide", entry.model && isRead(entry) ? entry.version : ""),
    }, {
        key: "size", title: "Size", class: "number wide column-number",
        sortedBy: (entry) => entry.tally.size,
        makeCell: ({ tally }) => makeCell("number wide", tally.size === 0 ? "" : formatSize(tally.size)),
    }, {
        key: "items", title: "Items", class: "number wide column-number",
        sortedBy: (entry) => entry.tally.items,
        makeCell: (entry) => makeCell("number wide", isRead(entry) ? format(entry.tally.items) : ""),
    },
    ...allFamilies.map((family) => ({
        key: `family-${family}`, title: data.families[family], class: "column-bar",
        sortedBy: ({ tally }) => tally.items - tally.there[family],
        makeCell: (entry) => (isRead(entry) ? makeBar(entry.tally.there[family], entry.tally.items, data.families[family]) : makeCell("", "")),
    })), {
        key: "missing", title: "Missing", class: "number column-number",
        sortedBy: (entry) => countMissing(entry.tally),
        makeCell: (entry) => (isRead(entry) ? makeCell("number", format(countMissing(entry.tally)), "Missing") : makeCell("", "")),
    }, {
        key: "findings", title: "Findings", class: "wide column-findings",
        sortedBy: ({ tally }) => tally.errors * 1e9 + tally.warnings, // errors first
        makeCell: ({ tally }) => makeCell("wide", formatFindings(tally)),
    },
];

// Where it matches, the style hides the columns that are only for a wide page.
const narrow = matchMedia("(max-width: 60rem)");

function countColumns() {
    return columns.filter((column) => !narrow.matches || !column.class.includes("wide")).length;
}

function makeHead() {
    return make("tr", { role: "row" }, ...columns.map(({ key, title, class: name }) => {
        const isSorted = state.sortKey === key;
        const arrow = !isSorted ? "" : state.isDescending ? " \u2193" : " \u2191";
        return make("th", { scope: "col", role: "columnheader", class: name,
            "aria-sort": !isSorted ? "none" : state.isDescending ? "descending" : "ascending" },
            make("button", { type: "button", class: "plain", "data-key": key, click: () => sortBy(key) }, title + arrow));
    }));
}

function sortBy(key) {
    state.isDescending = state.sortKey === key ? !state.isDescending : key !== "name";
    state.sortKey = key;
    showModels();
    find("models").querySelector(`[data-key="${key}"]`).focus();
}

function makeCell(name, content, label) {
    return make("td", { role: "cell", class: name, ...(label && { "data-label": label }) }, content);
}

/** Makes the cell of a family: how many items have a variant, in words and as a bar. */
function makeBar(there, items, label) {
    const bar = make("span", { class: "bar" }, items === 0 ? "none" : `${format(there)} of ${format(items)}`);
    bar.style.setProperty("--part", items === 0 ? 0 : there / items);
    return makeCell("", bar, label);
}

function isRead({ tally }) {
    return tally.refused < tally.models;
}

/** Makes the cell of a name, which opens and closes the entry's row. */
function makeNameCell(entry, row) {
    return make("th", { role: "rowheader", scope: "row" },
        make("button", { type: "button", class: "plain", "aria-expanded": String(entry.isOpen ?? state.opened.has(entry.model)), click: () => toggle(entry, row) },
            make("span", {}, ...makePath(entry.label))),
        ...makeWords(entry));
}

function makeRow(entry) {
    const row = make("tr", { role: "row", class: entry.folder ? "folder" : "model" });
    row.append(...columns.map((column) => column.makeCell(entry, row)));
    row.firstChild.style.setProperty("--depth", entry.depth);
    return row;
}

/** Makes the row of an entry, and the one that it has opened to. */
function makeRowOfModels(entry) {
    const row = makeRow(entry);
    row.entry = entry;
    return state.opened.has(entry.model) ? [row, makeDetails(entry.model)] : row;
}

/** What is to be known of an entry in a word. */
function makeWords({ folder, tally }) {
    const words = folder ? [count(tally.models, "model", "models")] : [];
    if (tally.refused > 0) words.push(folder ? `${format(tally.refused)} refused` : "refused");
    if (tally.stale > 0) words.push(folder ? `${format(tally.stale)} stale` : "stale");
    return words.map((word) => make("span", { class: "word" }, word));
}

function toggle(entry, row) {
    if (entry.folder) toggleFolder(entry);
    else toggleModel(entry.model, row);
}

function toggleFolder({ folder, isOpen: wasOpen }) {
    state.folds.set(folder.path, !wasOpen);
    const body = find("models").tBodies[0];
    // As many rows as before, so that the one that was pressed stays where it is.
    showModels(body.rows.length);
    Array.from(body.rows).find((row) => row.entry?.folder?.path === folder.path)?.querySelector("button").focus();
}

function toggleModel(model, row) {
    const isNow = !state.opened.delete(model);
    row.querySelector("button").setAttribute("aria-expanded", String(isNow));
    if (!isNow) return row.nextElementSibling.remove();
    state.opened.add(model);
    row.after(makeDetails(model));
}

let waiting = null; // the row with the button for more rows
const observer = new IntersectionObserver((seen) => {
    if (seen.some(({ isIntersecting }) => isIntersecting)) showMoreRows();
}, { rootMargin: "800px" });

function showMoreRows() {
    observer.disconnect();
    waiting?.querySelector("button").click();
}

function makeMoreRow(button) {
    waiting = make("tr", { role: "row", class: "more" }, make("td", { role: "cell", colspan: countColumns() }, button));
    observer.observe(waiting);
    return waiting;
}

function showModels(rowCount = 0) {
    const shown = models.filter(isShown);
    const tally = makeTally();
    for (const model of shown) addTally(tally, model.tally);
    const table = find("models");
    table.tHead.replaceChildren(makeHead());
    observer.disconnect();
    waiting = null;
    table.tBodies[0].replaceChildren();
    appendSome(table.tBodies[0], makeRows(shown), rowsAtOnce, makeRowOfModels, makeMoreRow, 0, Math.max(rowsAtOnce, rowCount));
    find("shown").textContent = `${format(shown.length)} of ${count(models.length, "model", "models")}, `
        + `${format(countMissing(tally))} of ${count(tally.items * state.families.length, "variant", "variants")} missing`;
    const files = countFiles(tally);
    find("copy").textContent = `Copy the paths of ${count(files, "missing file", "missing files")}`;
    find("copy").disabled = files === 0;
    find("copy").onclick = () => copyMissing(shown);
    find("fold").hidden = find("unfold").hidden = !state.isInFolders;
}

// ---- What a model opens to

function makeDetails(model) {
    const files = countFiles(model.tally);
    const cell = make("td", { role: "cell", colspan: countColumns() },
        make("p", {}, ...makeWholePath(model.folder + model.name)),
        make("p", { class: "note" }, model.refusal ? `Refused: ${model.refusal}`
            : `Version ${model.version}, ${count(model.tally.size, "byte", "bytes")}, ${count(model.tally.items, "item", "items")}`),
        ...makeFindings(model));
    if (files > 0)
        cell.append(make("p", {}, make("button", { type: "button", click: () => copyMissing([model]) },
            `Copy the paths of ${count(files, "missing file", "missing files")}`)));
    model.kinds.forEach((kind, number) => {
        if (kind.names.length > 0) cell.append(makeItems(model, number));
    });
    return make("tr", { role: "row", class: "details" }, cell);
}

function makeFindings(model) {
    if (model.codes.size === 0) return [];
    const list = make("ul", { class: "findings" });
    for (const [code, number] of model.codes) {
        const [name, severity, text, explanation, remedy] = data.kinds[code];
        const places = [...model.findings.filter((finding) => finding[0] === code).map(makePlaceOfFinding),
            ...(placesOfItems[name]?.(model) ?? [])];
        const inner = make("ul", {});
        appendSome(inner, places, placesAtOnce, (makePlace) => make("li", {}, ...makePlace()), (button) => make("li", { class: "more" }, button));
        list.append(make("li", {},
            make("strong", {}, `${severity}: ${text}`), ` (${name}${number > 1 ? `, ${format(number)} times` : ""})`,
            make("p", {}, `${explanation} What to do: ${remedy}.`), inner));
        if (places.length < number)
            list.lastChild.append(make("p", { class: "note" }, `${format(number - places.length)} more are not shown here; zek check shows them.`));
    }
    return [make("h3", {}, formatFindings(model.tally)), list];
}

function makePlaceOfFinding([, place, message]) {
    return () => [make("bdi", {}, place), ": ", make("bdi", {}, message)];
}

/** Returns functions that make the places of the marks that a test is true of. */
function findMarks(model, test, describe) {
    const places = [];
    model.kinds.forEach(({ names, marks }, kind) => marks.forEach((mark, i) => {
        const index = Math.floor(i / allFamilies.length);
        const family = i % allFamilies.length;
        if (test(Math.floor(mark / flagFactor), mark % flagFactor === 0))
            places.push(() => [`${kindNames[kind]} ${index} `, make("bdi", {}, shorten(names[index])),
                `, ${data.families[family]}: ${describe} `, make("bdi", { class: "path" }, describePath(model, kind, index, family))]);
    }));
    return places;
}

function findPartialFamilies(model) {
    return model.kinds.flatMap(({ names, there }, kind) => allFamilies
        .filter((family) => there[family] > 0 && there[family] < names.length)
        .map((family) => () => [`${data.families[family]}: ${there[family]} of ${count(names.length, kindNames[kind], `${kindNames[kind]}s`)}`]));
}

// Findings that are not in the data, since the marks say the same.
const placesOfItems = {
    "flag-without-variant": (model) => findMarks(model, (flag, isThere) => flag === 1 && !isThere, "the flag is 1, and there is no"),
    "variant-without-flag": (model) => findMarks(model, (flag, isThere) => flag === 0 && isThere, "the flag is 0, and there is"),
    "wrong-flag": (model) => findMarks(model, (flag) => flag > 1, "the flag is neither 0 nor 1;"),
    "partial-family": findPartialFamilies,
};

/** A variant's path; of several files the first, and how far they go. */
function describePath(model, kind, index, family) {
    const files = data.paths[kind][family].length;
    return shorten(getPath(model, kind, index, family, 0)) + (files > 1 ? `, 0 to ${files - 1}` : "");
}

function makeItems(model, number) {
    const { names, marks } = model.kinds[number];
    const body = make("tbody", {});
    const width = allFamilies.length;
    appendSome(body, names, itemsAtOnce, (name, index) => make("tr", {},
        make("td", { class: "number", "data-label": "Index" }, index),
        make("th", { scope: "row" }, makeName(name)),
        ...allFamilies.map((family) => make("td", { "data-label": data.families[family] },
            makeMark(marks[index * width + family], data.paths[number][family].length),
            make("div", { class: "path" }, make("bdi", {}, describePath(model, number, index, family)))))),
    (button) => make("tr", { class: "more" }, make("td", { colspan: width + 2 }, button)));
    return make("table", { class: "items" }, make("caption", {}, kindTitles[number]),
        make("thead", {}, make("tr", {}, make("th", { scope: "col", class: "number column-index" }, "Index"), make("th", { scope: "col" }, "Name"),
            ...data.families.map((family) => make("th", { scope: "col" }, family)))),
        body);
}

function makeMark(mark, fileCount) {
    const flag = Math.floor(mark / flagFactor);
    const missing = countBits(mark % flagFactor);
    const text = missing === 0 ? "\u2713 there" : missing < fileCount ? `\u2717 ${fileCount - missing} of ${fileCount} files` : "\u2717 missing";
    const isTrue = flag === (missing === 0 ? 1 : 0);
    return make("div", {}, text, ...(isTrue ? [] : [make("span", { class: "word" }, flag > 1 ? "wrong flag" : `flag ${flag}`)]));
}

// ---- Copying

async function copyMissing(some) {
    const paths = [];
    for (const model of some) forEachMissing(model, (path) => paths.push(path));
    const text = `${paths.join("\n")}\n`;
    const escaped = paths.filter((path) => /\\x[0-9a-f]{2}/.test(path)).length;
    try {
        await navigator.clipboard.writeText(text);
        find("copied").textContent = `Copied ${count(paths.length, "path", "paths")}.`
            + (escaped > 0 ? ` ${format(escaped)} of them hold bytes that are no text and stand as \\x..; zek report --json has them as they are.` : "");
    } catch {
        find("list-text").value = text;
        find("list").showModal();
        find("list-text").select();
    }
}

// ---- Overview

function showTotals() {
    const tile = (title, number) => make("div", {}, make("dt", {}, title), make("dd", {}, format(number)));
    find("totals").replaceChildren(
        tile("Models", total.models), tile("Refused", total.refused), tile("Stale", total.stale), tile("Items", total.items),
        tile("Variants missing", countMissing(total)));
    find("written").textContent = `As of ${new Date(data.time).toLocaleString()}. `
        + "A variant is a texture, cubemap or lightmap in the compression of one family.";
}

function showCoverage() {
    const sums = kindNames.map((name, kind) => {
        const sum = { items: 0, there: allFamilies.map(() => 0) };
        for (const model of models) {
            sum.items += model.kinds[kind].names.length;
            for (const family of allFamilies) sum.there[family] += model.kinds[kind].there[family];
        }
        return sum;
    });
    find("coverage").replaceChildren(
        make("thead", {}, make("tr", {}, make("th", { scope: "col" }, "Family"),
            ...kindTitles.map((title) => make("th", { scope: "col" }, title)))),
        make("tbody", {}, ...allFamilies.map((family) => make("tr", {}, make("th", { scope: "row" }, data.families[family]),
            ...sums.map(({ items, there }) => makeBar(there[family], items))))));
}

/** Makes a button that shows certain models in the table. */
function makeShowButton(label, filters) {
    return make("button", { type: "button", class: "plain", click: () => {
        change({ text: "", code: -1, show: "all", ...filters });
        showFilters();
        find("models-title").scrollIntoView();
    } }, ...label);
}

/** Returns the folders and single models that lack most, the first ones first. */
function findMost() {
    const places = [];
    const visit = (folder) => {
        const entries = getEntries(folder);
        for (const entry of entries) if (entry.folder) visit(entry.folder);
        const own = entries.filter((entry) => entry.model);
        const tally = makeTally();
        for (const entry of own) addTally(tally, entry.tally);
        const path = own.length === 1 ? own[0].model.folder + own[0].model.name : folder.path;
        places.push({ path, tally, missing: countMissing(tally) });
    };
    visit(makeTree(models));
    return places.filter(({ missing }) => missing > 0).sort((a, b) => b.missing - a.missing).slice(0, mostStarts);
}

function makePlaceOfMost({ path, tally, missing }) {
    const parts = state.families.filter((family) => tally.items > tally.there[family])
        .map((family) => `${data.families[family]} ${format(tally.items - tally.there[family])}`);
    return make("li", {},
        makeShowButton(makePath(path), { text: path.toLowerCase(), show: "lacking", sortKey: "missing", isDescending: true }),
        ` ${format(missing)} of ${format(tally.items * state.families.length)} (${parts.join(", ")})`);
}

function showStart() {
    const lines = [];
    if (total.refused > 0)
        lines.push([`${count(total.refused, "model is", "models are")} refused: export again. `,
            makeShowButton(["Show"], { show: "refused" })]);
    if (total.stale > 0)
        lines.push([`${count(total.stale, "model is", "models are")} stale: run zek mark. `,
            makeShowButton(["Show"], { show: "stale" })]);
    const unused = state.families.filter((family) => total.items > 0 && total.there[family] === 0);
    if (unused.length > 0)
        lines.push([`No item has a variant in ${unused.map((family) => data.families[family]).join(", ")}. `
            + "What you do not use need not count: see \u201cFamilies that count\u201d below."]);
    const most = findMost();
    if (most.length > 0)
        lines.push(["Most variants are missing here:", make("ul", {}, ...most.map(makePlaceOfMost))]);
    if (lines.length === 0) lines.push(["Nothing is missing."]);
    find("start").replaceChildren(...lines.map((line) => make("li", {}, ...line)));
}

// ---- Controls

function showFilters() {
    find("text").value = state.text;
    find("show").value = state.show;
    find("code").value = String(state.code);
    find("folders").checked = state.isInFolders;
}

function makeFilters() {
    const counts = new Map();
    for (const model of models)
        for (const code of model.codes.keys()) counts.set(code, (counts.get(code) ?? 0) + 1);
    find("code").append(make("option", { value: -1 }, "any or none"),
        ...[...counts.keys()].sort((a, b) => a - b).map((code) =>
            make("option", { value: code }, `${data.kinds[code][0]} (${count(counts.get(code), "model", "models")})`)));
    find("families").append(...allFamilies.map((family) => make("label", { class: "choice" },
        make("input", { type: "checkbox", checked: true, "data-family": family, change: chooseFamilies }), data.families[family])));
}

function chooseFamilies() {
    const chosen = [...find("families").querySelectorAll("input")].filter((box) => box.checked);
    state.families = chosen.map((box) => Number(box.dataset.family));
    showTotals();
    showStart();
    showModels();
}

function listen() {
    let timer = 0;
    find("filters").addEventListener("submit", (event) => event.preventDefault());
    find("text").addEventListener("input", () => {
        clearTimeout(timer);
        timer = setTimeout(() => change({ text: find("text").value.toLowerCase() }), 150);
    });
    find("show").addEventListener("change", () => change({ show: find("show").value }));
    find("code").addEventListener("change", () => change({ code: Number(find("code").value) }));
    find("folders").addEventListener("change", () => change({ isInFolders: find("folders").checked }));
    find("fold").addEventListener("click", () => change({ isFolded: true, folds: new Map() }));
    find("unfold").addEventListener("click", () => change({ isFolded: false, folds: new Map() }));
    narrow.addEventListener("change", () => showModels(find("models").tBodies[0].rows.length));
    // On paper there is no button to ask for more.
    addEventListener("beforeprint", () => showModels(Infinity));
}

function change(values) {
    Object.assign(state, values);
    showModels();
}

makeFilters();
showFilters();
showTotals();
showStart();
showCoverage();
showModels();
listen();
