// The tree: only the rows that are in sight are elements of the page.

const tree = document.getElementById('tree');
const space = make('div', 'space');
space.setAttribute('role', 'none');
tree.append(space);

const view = {
    rows: [],  // those that are unfolded, from the top
    selected: rows[0],
    filter: null,     // says of a row whether it is a hit; null where all are shown
    isSearch: false,  // the filter asks for words
    numHits: 0,
    withValues: true,
    withEmpty: false,
    height: 28,
};

function isOpen(row) {
    return view.filter ? row.isFilterOpen : row.isOpen;
}

function setOpen(row, isOpenNow) {
    if (view.filter) row.isFilterOpen = isOpenNow;
    else row.isOpen = isOpenNow;
}

// Whether a row is shown where all rows above it are unfolded.
function isShown(row, isBelowHit) {
    if (view.filter && !row.isHit && !row.hasHit && !isBelowHit) return false;
    if (row.kind !== 'attribute' || (view.filter && row.isHit)) return true;
    if (row.sign || row.relations.length > 0 || row === view.selected) return true;
    return view.withValues && (view.withEmpty || !isEmpty(row));
}

function isEmpty(row) {
    return isRepeated(row) || Boolean(data.nodes[row.node].a[row.index][3]);
}

// Whether anything would show below a row.
function canOpen(row) {
    if (row.kind !== 'element') return false;
    const isBelowHit = isAtOrBelowHit(row);
    for (let at = row.at + 1; at < row.end; at = rows[at].end)
        if (isShown(rows[at], isBelowHit)) return true;
    return false;
}

function isAtOrBelowHit(row) {
    if (!view.filter) return false;
    for (let each = row; each; each = each.parent)
        if (each.isHit) return true;
    return false;
}

/** Collects the unfolded rows and draws those in sight. */
function layOut() {
    view.rows = [];
    let hitEnd = 0;  // behind the rows below the hit that was met last
    for (let at = 0; at < rows.length;) {
        const row = rows[at];
        if (row.kind === 'element') row.numShown = 0;
        if (row !== rows[0] && !isShown(row, at < hitEnd)) {
            at = row.end;
            continue;
        }
        if (view.filter && row.isHit) hitEnd = Math.max(hitEnd, row.end);
        row.line = view.rows.length;
        row.place = row.parent ? ++row.parent.numShown : 1;
        view.rows.push(row);
        at = isOpen(row) ? at + 1 : row.end;
    }
    space.style.height = view.rows.length * view.height + 'px';
    draw();
}

/** Draws the rows in sight. */
function draw() {
    const first = Math.max(0, Math.floor(tree.scrollTop / view.height) - 5);
    const last =
        Math.min(view.rows.length, first + Math.ceil(tree.clientHeight / view.height) + 10);
    space.replaceChildren(...view.rows.slice(first, last).map(makeRow));
    const isInSight =
        isVisible(view.selected) && view.selected.line >= first && view.selected.line < last;
    if (isInSight) tree.setAttribute('aria-activedescendant', 'row' + view.selected.at);
    else tree.removeAttribute('aria-activedescendant');
}

function isVisible(row) {
    return view.rows[row.line] === row;
}

function makeRow(row) {
    const element = make('div', 'row ' + row.kind);
    element.id = 'row' + row.at;
    element.setAttribute('role', 'treeitem');
    element.setAttribute('aria-level', row.depth + 1);
    element.setAttribute('aria-posinset', row.place);
    element.setAttribute('aria-setsize', row.parent ? row.parent.numShown : 1);
    element.setAttribute('aria-selected', row === view.selected);
    element.style.top = row.line * view.height + 'px';
    element.style.setProperty('--depth', row.depth);
    const colour = colourSignOf(row);
    if (colour) element.classList.add(signs[colour].className);
    if (view.isSearch && row.isHit) element.classList.add('hit');
    const opens = canOpen(row);
    const fold = make('span', 'fold', opens ? (isOpen(row) ? '\u25be' : '\u25b8') : '');
    fold.setAttribute('aria-hidden', 'true');
    if (opens) element.setAttribute('aria-expanded', isOpen(row));
    element.append(fold);
    fillRow(element, row);
    return element;
}

function fillRow(element, row) {
    if (row.sign) element.append(makeSign(row.sign));
    element.append(make('span', 'name', nameOf(row) || '(no name)'));
    if (row.kind === 'attribute') element.append(make('span', 'value', valueOf(row)));
    element.append(make('span', 'type', shortTypeOf(typeOf(row))));
    if (row.kind === 'element' && data.nodes[row.node].f)
        element.append(make('span', 'badge', 'field'));
    if (row.kind === 'element' && data.nodes[row.node].u)
        element.append(make('span', 'badge query', 'unknown class'));
    if (row.kind === 'element' && row.changes > 0 && !isOpen(row))
        element.append(
            make('span', 'badge tilde', row.changes + (row.changes > 1 ? ' changes' : ' change')));
    for (const relation of row.relations) element.append(makeTarget(relation, true));
}

// An arrow to what a relation leads to, or to the path that leads nowhere.
function makeTarget(relation, isInTree) {
    const target = targetOf(relation);
    const element = make('span', 'relation');
    if (relation.s) element.append(makeSign(relation.s));
    else if (relation.u) element.append(makeSign('?'));
    const text = '\u2192 ' + (target ? pathOf(target) : relation.o);
    if (!target) {
        element.append(make('span', 'dead', text));
        return element;
    }
    const link = linkTo(target, text);
    if (isInTree) link.tabIndex = -1;  // Enter on the row does it
    element.append(link);
    return element;
}

/** Makes a row the selected one and brings it into sight. */
function select(row) {
    const former = view.selected;
    view.selected = row;
    const isMissing = !isVisible(row);
    for (let each = row.parent; each; each = each.parent) setOpen(each, true);
    if (isMissing || (former.kind === 'attribute' && former !== row)) layOut();
    bringIntoSight(row);
    draw();
    showDetails(row);
    markInPlan(row);
    followInAddress();
}

function bringIntoSight(row) {
    const top = row.line * view.height;
    if (top < tree.scrollTop) tree.scrollTop = top;
    const bottom = top + view.height - tree.clientHeight;
    if (bottom > tree.scrollTop) tree.scrollTop = bottom;
}

/** Selects a row wherever it is: a filter that hides it ends. The way back is kept. */
function jumpTo(row) {
    clearTimeout(following);
    history.replaceState({row: view.selected.at}, '', '#' + encodeURI(pathOf(view.selected)));
    history.pushState({row: row.at}, '', '#' + encodeURI(pathOf(row)));
    showRow(row);
    tree.focus();
}

function showRow(row) {
    const isHidden = () => view.filter && !isShown(row, isAtOrBelowHit(row));
    if (isHidden()) endFilter();
    select(row);
}

function toggle(row, isOpenNow) {
    if (!canOpen(row) || isOpen(row) === isOpenNow) return;
    setOpen(row, isOpenNow);
    if (!isOpenNow && view.selected.at > row.at && view.selected.at < row.end) select(row);
    layOut();
}

function setAllOpen(isOpenNow) {
    for (const row of rows)
        if (row.kind === 'element') setOpen(row, isOpenNow || row === rows[0]);
    layOut();
    select(isVisible(view.selected) ? view.selected : rows[0]);
}

// The keys of a tree, as screen readers and their users expect them. ------------------------------

function moveTo(line) {
    select(view.rows[Math.min(Math.max(line, 0), view.rows.length - 1)]);
}

// The line of the selected row; that of the nearest one above it where it is folded away.
function currentLine() {
    let row = view.selected;
    while (!isVisible(row)) row = row.parent;
    return row.line;
}

function goIn(row) {
    if (!canOpen(row)) return;
    if (!isOpen(row)) toggle(row, true);
    else moveTo(row.line + 1);
}

function goOut(row) {
    if (row.kind === 'element' && isOpen(row) && canOpen(row)) toggle(row, false);
    else if (row.parent) select(row.parent);
}

function act(row) {
    const target = row.relations.map(targetOf).find((each) => each);
    if (target) jumpTo(target);
    else toggle(row, !isOpen(row));
}

function openSiblings(row) {
    if (!row.parent) return toggle(row, true);
    for (let at = row.parent.at + 1; at < row.parent.end; at = rows[at].end)
        if (rows[at].kind === 'element') setOpen(rows[at], true);
    layOut();
    bringIntoSight(row);
}

const typed = {
    text: '',
    time: 0
};

// Letters typed within a second of each other make up the beginning of a name.
function goToName(key, now) {
    typed.text = now - typed.time > 1000 ? key : typed.text + key;
    typed.time = now;
    const from = currentLine() + (typed.text.length > 1 ? 0 : 1);
    const wanted = typed.text.toLowerCase();
    for (let i = 0; i < view.rows.length; ++i) {
        const row = view.rows[(from + i) % view.rows.length];
        if (nameOf(row).toLowerCase().startsWith(wanted)) return select(row);
    }
}

function onTreeKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const line = currentLine();
    const row = view.rows[line];
    const page = Math.max(1, Math.floor(tree.clientHeight / view.height) - 1);
    const actions = {
        ArrowDown: () => moveTo(line + 1),
        ArrowUp: () => moveTo(line - 1),
        ArrowRight: () => goIn(row),
        ArrowLeft: () => goOut(row),
        Home: () => moveTo(0),
        End: () => moveTo(view.rows.length - 1),
        PageDown: () => moveTo(line + page),
        PageUp: () => moveTo(line - page),
        Enter: () => act(row),
        ' ': () => toggle(row, !isOpen(row)),
        '*': () => openSiblings(row),
    };
    const action = actions[event.key];
    if (action) action();
    else if (event.key.length === 1 && event.key !== '/') goToName(event.key, event.timeStamp);
    else return;
    event.preventDefault();
}

function rowAt(event) {
    const element = event.target.closest('.row');
    return element ? rows[Number(element.id.slice(3))] : null;
}

tree.addEventListener('scroll', draw, {passive: true});
tree.addEventListener('keydown', onTreeKey);
tree.addEventListener('click', (event) => {
    const row = rowAt(event);
    if (!row) return;
    const isFold = Boolean(event.target.closest('.fold'));
    if (isFold) toggle(row, !isOpen(row));
    select(row);
    if (!isFold) bringDetailsIntoSight(row);
});

// Where the details are below the tree, and not beside it, the page goes down to them as far as the
// row stays in sight.
function bringDetailsIntoSight(row) {
    const line = document.getElementById('row' + row.at);
    const top = details.getBoundingClientRect().top;
    if (!line || details.getBoundingClientRect().left >= tree.getBoundingClientRect().right) return;
    if (top <= innerHeight * 0.6) return;
    scrollBy(0, Math.min(top - innerHeight * 0.4, line.getBoundingClientRect().top - 4));
}
tree.addEventListener('dblclick', (event) => {
    const row = rowAt(event);
    if (row && !event.target.closest('.fold')) toggle(row, !isOpen(row));
});
