'use strict';
// The data of the page as rows of a tree, in the order in which they stand: marks, attributes and
// elements below an element. `end` is behind the last row below a row.

const data = JSON.parse(document.getElementById('data').textContent);
const rows = [];
const rowOfNode = [];
const isComparison = data.files.length > 1;
const emptyText = '(empty)';
const signs = {
    '-': {name: 'removed', shown: '\u2212', className: 'minus'},
    '+': {name: 'added', shown: '+', className: 'plus'},
    '~': {name: 'changed', shown: '~', className: 'tilde'},
    '?': {name: 'unknown', shown: '?', className: 'query'},
};

/**
 * An element with this tag, class and text. Texts of a model come into the page in this way only.
 */
function make(tag, className, text) {
    const element = document.createElement(tag);
    if (className) element.className = className;
    if (text !== undefined) element.textContent = text;
    return element;
}

/** "1 point", "2,000 points". */
function say(number, word) {
    return number.toLocaleString('en') + ' ' + word + (number === 1 ? '' : 's');
}

/** A sign with its colour and, for those who do not see it, its name. */
function makeSign(sign) {
    const known = signs[sign];
    const element = make('span', 'sign ' + known.className, known.shown);
    element.title = known.name;
    element.setAttribute('role', 'img');
    element.setAttribute('aria-label', known.name);
    return element;
}

function addRow(kind, node, index, parent) {
    const row = {
        kind,
        node,
        index,
        parent,
        at: rows.length,
        end: rows.length + 1,
        depth: parent ? parent.depth + 1 : 0,
        sign: signOf(kind, node, index),
        relations: [],
        told: [],
        isOpen: false,
        isFilterOpen: false,
        isHit: false,
        hasHit: false,
        changes: 0,
    };
    rows.push(row);
    return row;
}

function signOf(kind, node, index) {
    const entry = data.nodes[node];
    if (kind === 'mark') return entry.m[index][0];
    if (kind === 'attribute') return entry.a[index][4] || '';
    return entry.s || (entry.u ? '?' : '');
}

function buildRows() {
    data.nodes.forEach((entry, node) => {
        const row = addRow('element', node, 0, node === 0 ? null : rowOfNode[entry.p]);
        rowOfNode.push(row);
        (entry.m || []).forEach((mark, index) => addRow('mark', node, index, row));
        (entry.a || []).forEach((attribute, index) => addRow('attribute', node, index, row));
    });
    for (let at = rows.length - 1; at > 0; --at) {
        const row = rows[at];
        row.parent.end = Math.max(row.parent.end, row.end);
        row.parent.changes += row.changes + (isChange(row) ? 1 : 0);
    }
    for (const relation of data.relations) {
        const from = rowOfPlace(relation.n, relation.a);
        from.relations.push(relation);
        const to = targetOf(relation);
        if (to) to.told.push(relation);
        if (!isComparison || !relation.s) continue;
        for (let row = from; row; row = row.parent) ++row.changes;
    }
}

/** Whether a row differs by itself, and not by what is below it. */
function isChange(row) {
    if (!isComparison) return false;
    if (row.kind === 'mark') return data.nodes[row.node].m[row.index][2] === 1;
    if (row.kind === 'attribute') return row.sign !== '';
    // What is below a removed or an added element goes and comes with it.
    return (row.sign === '-' || row.sign === '+') && !(row.parent && row.parent.sign === row.sign);
}

/** How many differences a row stands for by itself. */
function numChanges(row) {
    return (isChange(row) ? 1 : 0) + row.relations.filter((relation) => relation.s).length;
}

/** The sign that gives a row its colour: that of a removed or an added element is its values', too. */
function colourSignOf(row) {
    const sign = rowOfNode[row.node].sign;
    return row.sign || (sign === '-' || sign === '+' ? sign : '');
}

/** Whether a row says again what the row above it says. */
function isRepeated(row) {
    const entry = data.nodes[row.node];
    if (row.kind !== 'attribute' || row.sign) return false;
    return entry.a[row.index][0] === 'Name' && entry.a[row.index][2] === entry.n;
}

/** The row of an attribute of a node, or of the node itself where there is none of that name. */
function rowOfPlace(node, name) {
    const index = name ? (data.nodes[node].a || []).findIndex((each) => each[0] === name) : -1;
    const row = rowOfNode[node];
    return index < 0 ? row : rows[row.at + 1 + (data.nodes[node].m || []).length + index];
}

function targetOf(relation) {
    return relation.t < 0 ? null : rowOfPlace(relation.t, relation.b);
}

function nameOf(row) {
    const entry = data.nodes[row.node];
    if (row.kind === 'mark') return entry.m[row.index][1];
    return row.kind === 'attribute' ? entry.a[row.index][0] : entry.n;
}

function typeOf(row) {
    const entry = data.nodes[row.node];
    if (row.kind === 'mark') return '';
    return row.kind === 'attribute' ? data.types[entry.a[row.index][1]] : data.classes[entry.c];
}

/** The type without the word that all attributes have. */
function shortTypeOf(type) {
    const inner = /^Attr<(.*)>$/.exec(type);
    return inner ? inner[1] : type;
}

/** The value of an attribute's row; of one that differs, that before and that after. */
function valueOf(row) {
    if (row.kind !== 'attribute') return '';
    const attribute = data.nodes[row.node].a[row.index];
    if (attribute[4] !== '~') return attribute[2];
    return (attribute[5] || emptyText) + ' \u2192 ' + (attribute[6] || emptyText);
}

/** As in "/Scans/First/Points"; "/" for the root. */
function pathOf(row) {
    const names = [];
    for (let each = row; each.parent; each = each.parent)
        if (each.kind !== 'mark') names.push(nameOf(each));
    return '/' + names.reverse().join('/');
}

/** The row of a path, the first of several; null where it leads nowhere. */
function findRow(path) {
    let row = rows[0];
    for (const name of path.split('/').filter((part) => part !== '')) {
        const wanted = name.toLowerCase();
        let found = null;
        for (let at = row.at + 1; at < row.end && !found; at = rows[at].end)
            if (rows[at].kind === 'element' && nameOf(rows[at]).toLowerCase() === wanted)
                found = rows[at];
        for (let at = row.at + 1; at < row.end && !found; at = rows[at].end)
            if (rows[at].kind === 'attribute' && nameOf(rows[at]).toLowerCase() === wanted)
                found = rows[at];
        if (!found) return null;
        row = found;
    }
    return row;
}

/** What a search looks into, made at the first one. */
function searchTextOf(row) {
    if (row.searchText === undefined)
        row.searchText = isRepeated(row) ?
            '' :
            (nameOf(row) + '\n' + typeOf(row) + '\n' + valueOf(row)).toLowerCase();
    return row.searchText;
}

function isUnknown(row) {
    return row.sign === '?' || row.relations.some((relation) => relation.u) ||
        (row.kind === 'element' && Boolean(data.nodes[row.node].u));
}

/** "tells /Scans (Notify, after, priority 3)", without the path. */
function relationWords(relation) {
    return '(' + relation.c + ', ' + (relation.q ? 'before' : 'after') + ', priority ' +
        relation.k + ')';
}

function linkTo(row, text) {
    const link = make('a', 'jump', text);
    link.href = '#' + encodeURI(pathOf(row));
    link.addEventListener('click', (event) => {
        event.preventDefault();
        event.stopPropagation();
        jumpTo(row);
    });
    return link;
}

buildRows();
