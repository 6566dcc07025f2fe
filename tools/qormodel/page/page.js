// The head of the page, the search, and how it all begins.

const search = document.getElementById('search');
const show = document.getElementById('show');
const state = document.getElementById('status');

const shownKinds = {
    all: null,
    changes: (row) => isChange(row) || row.relations.some((relation) => relation.s),
    unknown: isUnknown,
    relations: (row) => row.relations.length > 0 || row.told.length > 0,
};

/** Shows what the search and the choice beside it ask for. */
function applyFilter() {
    const wanted = search.value.trim().toLowerCase();
    const isOfKind = shownKinds[show.value];
    const isWanted = (row) =>
        (!isOfKind || isOfKind(row)) && (!wanted || searchTextOf(row).includes(wanted));
    view.filter = wanted || isOfKind ? isWanted : null;
    view.isSearch = wanted !== '';
    markHits();
    tree.scrollTop = 0;
    layOut();
    if (view.filter) {
        const first = isVisible(view.selected) && view.selected.isHit ?
            view.selected :
            rows.find((row) => row.isHit);
        if (first) select(first);
    } else {
        select(view.selected);
    }
    tellHits();
}

function markHits() {
    view.numHits = 0;
    if (!view.filter) return;
    for (const row of rows) {
        row.isHit = view.filter(row);
        row.hasHit = false;
        if (row.isHit) ++view.numHits;
    }
    for (let at = rows.length - 1; at > 0; --at)
        if (rows[at].isHit || rows[at].hasHit) rows[at].parent.hasHit = true;
    for (const row of rows) row.isFilterOpen = row.hasHit;
}

function tellHits() {
    const isOfChanges = !view.isSearch && show.value === 'changes';
    const number = isOfChanges ? rows.reduce((sum, row) => sum + numChanges(row), 0) : view.numHits;
    state.textContent = !view.filter ? '' :
        view.numHits === 0           ? 'Nothing found' :
                                       say(number, isOfChanges ? 'difference' : 'hit');
}

/** Shows all again, with the selected row in sight. */
function endFilter() {
    search.value = '';
    show.value = 'all';
    applyFilter();
}

// Goes to the next hit, or to the one before, from the selected row on.
function goToHit(step) {
    if (!view.filter || view.numHits === 0) return;
    let at = view.selected.at;
    do at = (at + step + rows.length) % rows.length;
    while (!rows[at].isHit);
    select(rows[at]);
}

let waiting = 0;

search.addEventListener('input', () => {
    clearTimeout(waiting);
    waiting = setTimeout(applyFilter, 80);
});
search.addEventListener('keydown', (event) => {
    if (event.key === 'Escape' && search.value) {
        search.value = '';
        applyFilter();
    } else if (event.key === 'Escape' || event.key === 'ArrowDown') {
        tree.focus();
    } else if (event.key === 'Enter') {
        clearTimeout(waiting);
        const isFresh = view.searched !== search.value;
        view.searched = search.value;
        if (isFresh) applyFilter();
        else goToHit(event.shiftKey ? -1 : 1);
    } else {
        return;
    }
    event.preventDefault();
});
show.addEventListener('change', applyFilter);
document.getElementById('tools').addEventListener('submit', (event) => event.preventDefault());
document.getElementById('unfold').addEventListener('click', () => setAllOpen(true));
document.getElementById('fold').addEventListener('click', () => setAllOpen(false));
for (const [id, name] of [['values', 'withValues'], ['empty', 'withEmpty']]) {
    document.getElementById(id).addEventListener('change', (event) => {
        view[name] = event.target.checked;
        layOut();
        if (!isVisible(view.selected)) select(rowOfNode[view.selected.node]);
    });
}
document.addEventListener('keydown', (event) => {
    if (event.key !== '/' || event.ctrlKey || event.altKey || event.metaKey) return;
    if (event.target.matches('input[type=search]')) return;
    event.preventDefault();
    search.focus();
    search.select();
});
addEventListener('popstate', showAddress);

let following = 0;

// The address names what is selected, once the selection rests: browsers limit how often it changes.
function followInAddress() {
    clearTimeout(following);
    if (document.body.dataset.ready !== 'true') return;
    following = setTimeout(() => {
        const address = '#' + encodeURI(pathOf(view.selected));
        const isKept = history.state && history.state.row === view.selected.at;
        if (!isKept || decodeURI(location.hash) !== decodeURI(address))
            history.replaceState({row: view.selected.at}, '', address);
    }, 120);
}

// The address names what is selected, so that links from elsewhere lead to it. Of several with one
// path the way back knows the one.
function showAddress() {
    let path = location.hash.slice(1);
    try {
        path = decodeURI(path);
    } catch {  // it is shown as it stands
    }
    const kept = history.state && rows[history.state.row];
    const row = kept && pathOf(kept) === path ? kept : path && findRow(path);
    if (row) showRow(row);
    if (row || !path) tellHits();
    else state.textContent = 'There is no ' + path;
}

// The head. ---------------------------------------------------------------------------------------

function describeHead() {
    const names = data.files.map((file) => file.name);
    const title = document.getElementById('title');
    title.textContent = names.join(' \u2192 ');
    document.title = names.join(' \u2192 ');
    tree.setAttribute('aria-label', names.join(', '));
    const file = data.files[data.files.length - 1];
    const parts = [
        '\u201c' + file.title + '\u201d',
        'format ' + file.formatVersion,
        say(file.size, 'byte'),
        ...countParts((node, sign) => !isGone(node, sign)),
    ];
    const gone = isComparison ? countParts(isGone).filter((text) => !text.startsWith('0 ')) : [];
    if (gone.length > 0) parts.push('gone: ' + gone.join(', '));
    const about = document.getElementById('about');
    for (const part of parts) addTo(about, 'span', '', part);
    describeChanges();
    const warnings = document.getElementById('warnings');
    for (const each of data.files)
        for (const text of each.warnings) addTo(warnings, 'li', '', text);
    warnings.hidden = warnings.childElementCount === 0;
}

// Whether something of this sign, at this node, is no more in the second of two files.
function isGone(node, sign) {
    return data.nodes[node].s === '-' || (isComparison && sign === '-');
}

// How many of all parts there are for which `isCounted`, a function of node and sign, is true.
function countParts(isCounted) {
    const numNodes = (isField) =>
        data.nodes.filter((node, at) => Boolean(node.f) === isField && isCounted(at, '')).length;
    return [
        say(numNodes(false), 'object'),
        say(numNodes(true), 'field'),
        say(data.pointSets.reduce((sum, set) => sum + (isCounted(set.n, '') ? set.c : 0), 0),
            'point'),
        say(data.relations.filter((each) => isCounted(each.n, each.s)).length, 'relation'),
        say(rows.filter((row) => isUnknown(row) && isCounted(row.node, row.sign)).length,
            'unknown part'),
    ];
}

function describeChanges() {
    if (!isComparison) return show.querySelector('[value=changes]').remove();
    const list = document.getElementById('changes');
    list.hidden = false;
    for (const sign of Object.keys(signs)) {
        const item = addTo(list, 'li', signs[sign].className);
        item.append(makeSign(sign), ' ' + data.changes[sign] + ' ' + signs[sign].name);
    }
    if (Object.values(data.changes).some((count) => count > 0)) show.value = 'changes';
}

// Rows have one height, which goes with the size of the letters.
function measure() {
    const probe = make('div', 'row', 'X');
    space.append(probe);
    view.height = Math.max(16, Math.round(probe.getBoundingClientRect().height));
    probe.remove();
}

let width = innerWidth;
addEventListener('resize', () => {
    measure();
    layOut();
    if (innerWidth !== width) showPlan();
    width = innerWidth;
});

describeHead();
measure();
rows[0].isOpen = true;
applyFilter();
showPlan();
showThumbnails();
showAddress();
document.body.dataset.ready = 'true';
