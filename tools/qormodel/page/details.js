// What is known of the selected element, and the point sets of the whole model.

const details = document.getElementById('details');
const maxListed = 500;  // lines of a list that are shown unless all are asked for

// The colours of heights, from low to high, on light and on dark ground.
const ramps = {
    light: ['#3b528b', '#31688e', '#26828e', '#1f9e89', '#35b779', '#6ece58', '#b5b520', '#d98a00'],
    dark: ['#3b528b', '#2c728e', '#21918c', '#28ae80', '#5ec962', '#addc30', '#fde725', '#fff3a0'],
};
const darkness = matchMedia('(prefers-color-scheme: dark)');

function addTo(parent, tag, className, text) {
    const element = make(tag, className, text);
    parent.append(element);
    return element;
}

// What is shown already stays: only the selected line is another one.
function showDetails(row) {
    const line = lineOf(row);
    const lineElement = () => line < 0 ? null : details.querySelector('tbody').rows[line];
    if (details.node !== row.node || (line >= maxListed && !lineElement())) fillDetails(row);
    for (const marked of details.querySelectorAll('tr.selected'))
        marked.classList.remove('selected');
    const marked = lineElement();
    if (marked) marked.classList.add('selected');
}

// The line of the table for an attribute's row, else -1.
function lineOf(row) {
    return row.kind === 'attribute' ? row.index : -1;
}

// The first ones of a long list, and a button for the others.
function addLimited(list, all, numWanted, addOne) {
    const numShown = numWanted > maxListed ? all.length : Math.min(all.length, maxListed);
    for (let i = 0; i < numShown; ++i) addOne(all[i]);
    if (numShown === all.length) return null;
    const button = make('button', '', 'Show all ' + all.length.toLocaleString('en'));
    button.type = 'button';
    button.addEventListener('click', () => {
        for (let i = numShown; i < all.length; ++i) addOne(all[i]);
        button.remove();
        list.focus({preventScroll: true});
    });
    list.tabIndex = -1;
    return button;
}

function fillDetails(row) {
    details.node = row.node;
    const node = rowOfNode[row.node];
    const entry = data.nodes[row.node];
    const parts = [make('h2', '', nameOf(node) || '(no name)')];
    if (node.sign) parts[0].prepend(makeSign(node.sign), ' ');
    const about = make('p', 'about');
    addTo(about, 'span', 'path', pathOf(node));
    addTo(about, 'span', 'type', typeOf(node));
    if (entry.f) addTo(about, 'span', 'badge', 'field');
    if (entry.u) addTo(about, 'span', 'badge query', 'unknown class');
    parts.push(about);
    const set = data.pointSets.find((each) => each.n === row.node);
    if (set) parts.push(makeFigure(set, false));
    if (entry.m) parts.push(makeMarks(entry.m));
    if (entry.a) parts.push(...makeTable(entry.a, lineOf(row) + 1, node.sign));
    parts.push(...makeRelations(row.node));
    details.replaceChildren(...parts);
}

function makeMarks(marks) {
    const list = make('ul', 'marks');
    for (const [sign, text] of marks) {
        const item = addTo(list, 'li');
        item.append(makeSign(sign), ' ', text);
    }
    return list;
}

// The attributes with their whole texts.
function makeTable(attributes, numWanted, nodeSign) {
    const table = make('table');
    const head = addTo(addTo(table, 'thead'), 'tr');
    for (const title of ['Name', 'Value', 'Type']) addTo(head, 'th', '', title).scope = 'col';
    const body = addTo(table, 'tbody');
    const addLine = ([name, type, value, isDefault, sign, before, after]) => {
        const line = addTo(body, 'tr', isDefault && !sign ? 'faint' : '');
        const title = addTo(line, 'th', '', name);
        title.scope = 'row';
        const colour = sign || (nodeSign === '-' || nodeSign === '+' ? nodeSign : '');
        if (colour) line.classList.add(signs[colour].className);
        if (sign) title.prepend(makeSign(sign), ' ');
        const cell = addTo(addTo(line, 'td', 'value'), 'div');
        if (sign === '~') {
            addTo(cell, 'del', '', before || emptyText);
            cell.append(' \u2192 ');
            addTo(cell, 'ins', '', after || emptyText);
        } else {
            cell.textContent = value;
        }
        addTo(line, 'td', 'type', shortTypeOf(data.types[type])).title = data.types[type];
    };
    const more = addLimited(table, attributes, numWanted, addLine);
    return more ? [table, more] : [table];
}

function makeRelations(node) {
    const own = rowOfNode[node];
    const parts = [];
    const list = (title, relations, makeOne) => {
        if (relations.length === 0) return;
        parts.push(make('h3', '', title));
        const items = make('ul', 'relations');
        const addOne = (relation) => makeOne(addTo(items, 'li'), relation);
        const more = addLimited(items, relations, 0, addOne);
        parts.push(items);
        if (more) parts.push(more);
    };
    const rowsHere = [
        own,
        ...rows.slice(own.at + 1, own.end)
            .filter((each) => each.parent === own && each.kind === 'attribute')
    ];
    list('Tells', rowsHere.flatMap((each) => each.relations), (item, relation) => {
        item.append(
            (relation.a || nameOf(own)) + (relation.q ? ' asks ' : ' tells '),
            makeTarget(relation, false));
        addTo(item, 'span', 'type', relationWords(relation));
    });
    list('Is told by', rowsHere.flatMap((each) => each.told), (item, relation) => {
        if (relation.s) item.append(makeSign(relation.s), ' ');
        const from = rowOfPlace(relation.n, relation.a);
        item.append(linkTo(from, pathOf(from)));
        addTo(item, 'span', 'type', relationWords(relation));
    });
    return parts;
}

// Point sets. -------------------------------------------------------------------------------------

function drawCells(canvas, set) {
    const context = canvas.getContext('2d');
    const ramp = ramps[darkness.matches ? 'dark' : 'light'];
    const bytes = atob(set.d);
    context.clearRect(0, 0, set.w, set.h);
    for (let cell = 0; cell < set.w * set.h; ++cell) {
        const byte = bytes.charCodeAt(cell >> 1);
        const level = cell % 2 === 0 ? byte >> 4 : byte & 15;
        if (level === 0) continue;
        context.fillStyle = ramp[Math.min((level - 1) >> 1, ramp.length - 1)];
        context.fillRect(cell % set.w, Math.floor(cell / set.w), 1, 1);
    }
}

function numberText(value) {
    return String(Number(value.toPrecision(5)));
}

function sizeText(set) {
    return set.max.map((max, axis) => numberText(max - set.min[axis])).join(' \u00d7 ');
}

/** A thumbnail with what it shows; one of the list leads to its element. */
function makeFigure(set, isInList) {
    const figure = make('figure');
    const frame = addTo(figure, isInList ? 'button' : 'div', 'frame');
    if (isInList) {
        frame.type = 'button';
        frame.addEventListener('click', () => jumpTo(rowOfPlace(set.n, set.a)));
    }
    if (set.d) {
        const canvas = addTo(frame, 'canvas');
        canvas.width = set.w;
        canvas.height = set.h;
        canvas.setAttribute('role', 'img');
        canvas.setAttribute(
            'aria-label', 'The points of ' + nameOf(rowOfNode[set.n]) + ' from above');
        canvas.set = set;
        drawCells(canvas, set);
    }
    const caption = addTo(isInList ? frame : figure, isInList ? 'span' : 'figcaption', 'caption');
    if (isInList) {
        const node = rowOfNode[set.n];
        const name = addTo(caption, 'span', 'name', nameOf(node));
        if (isComparison && node.sign) name.prepend(makeSign(node.sign), ' ');
    }
    addTo(caption, 'span', '', say(set.c, 'point'));
    addTo(caption, 'span', 'type', sizeText(set));
    return figure;
}

// Figures are made when they come near to what is in sight.
function showThumbnails() {
    if (data.pointSets.length === 0) return;
    document.getElementById('points').hidden = false;
    const list = document.getElementById('thumbnails');
    const watcher = new IntersectionObserver((entries) => {
        for (const {isIntersecting, target} of entries) {
            if (!isIntersecting) continue;
            watcher.unobserve(target);
            target.replaceChildren(makeFigure(target.set, true));
        }
    }, {rootMargin: '300px'});
    for (const set of data.pointSets) {
        const place = addTo(list, 'div', 'thumbnail');
        place.set = set;
        watcher.observe(place);
    }
}

darkness.addEventListener('change', () => {
    for (const canvas of document.querySelectorAll('canvas')) drawCells(canvas, canvas.set);
});
