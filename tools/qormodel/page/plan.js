// The plan: where stations, pictures and markers are, seen from above, as a drawing that is as wide
// as its place.

const maxSymbols = 4000;
const kinds = {
    station: 'Stations',
    picture: 'Pictures',
    marker: 'Markers'
};
const svgNamespace = 'http://www.w3.org/2000/svg';

const plan = {
    symbols: data.plan.symbols.slice(0, maxSymbols),
    areas: data.plan.areas.slice(0, maxSymbols),
    chosen: -1,
    width: 600,
    height: 380,
    scale: 1,        // points of the drawing for a unit of the model
    center: [0, 0],  // of the drawing, in the model
    isWhole: true,   // all of it is in sight
    shapes: [],      // the drawn symbols, each with its place in the drawing
    taken: [],       // boxes of the drawing in which no name may lie
};

function makeSvg(tag, attributes) {
    const element = document.createElementNS(svgNamespace, tag);
    for (const [name, value] of Object.entries(attributes || {})) element.setAttribute(name, value);
    return element;
}

function addSvg(parent, tag, attributes) {
    const element = makeSvg(tag, attributes);
    parent.append(element);
    return element;
}

// Far outside of what is shown a place need not be exact, but it must be a number that is drawn.
function toDrawing(x, y) {
    const limit = (value) => Math.max(-1e6, Math.min(1e6, value));
    return [
        limit(plan.width / 2 + (x - plan.center[0]) * plan.scale),
        limit(plan.height / 2 - (y - plan.center[1]) * plan.scale),
    ];
}

function fitPlan() {
    const xs = [];
    const ys = [];
    for (const symbol of plan.symbols) xs.push(symbol.x), ys.push(symbol.y);
    for (const area of plan.areas)
        area.c.forEach((value, index) => (index % 2 === 0 ? xs : ys).push(value));
    const [left, right] = rangeOf(xs);
    const [low, high] = rangeOf(ys);
    plan.center = [left / 2 + right / 2, low / 2 + high / 2];
    const margin = Math.min(70, plan.width / 7);
    // Halves, since the whole may be too great for a number.
    const scale = Math.min(
        (plan.width - margin) / 2 / (right / 2 - left / 2),
        (plan.height - margin) / 2 / (high / 2 - low / 2));
    plan.scale = Number.isFinite(scale) && scale > 0 ? limitedScale(scale) : 40;
    plan.isWhole = true;
}

// What a number can hold bounds how near and how far the plan is seen.
function limitedScale(scale) {
    return Math.max(1e-306, Math.min(1e305, scale));
}

function rangeOf(values) {
    return values.reduce(
        ([min, max], each) => [Math.min(min, each), Math.max(max, each)], [Infinity, -Infinity]);
}

function signOfSymbol(symbol) {
    return symbol.from ? '~' : isComparison ? (data.nodes[symbol.n].s || '') : '';
}

function shapeOf(symbol, index) {
    const sign = signOfSymbol(symbol);
    const group = makeSvg('g', {
        class: 'symbol ' + symbol.k + (sign ? ' ' + signs[sign].className : ''),
        id: 'symbol' + index,
        role: 'option',
        'aria-selected': 'false',
    });
    const name = nameOf(rowOfNode[symbol.n]);
    group.setAttribute('aria-label', symbol.k + ' ' + name + (sign ? ', ' + signs[sign].name : ''));
    addSvg(group, 'title').textContent = textOfSymbol(symbol);
    addSvg(group, 'circle', {r: 12, class: 'reach'});
    if (symbol.k === 'station') {
        if (symbol.h !== undefined)
            addSvg(
                group, 'path',
                {d: 'M0 0H11', transform: 'rotate(' + -symbol.h * 180 / Math.PI + ')'});
        addSvg(group, 'circle', {r: plan.symbols.length > 100 ? 3 : 5});
    } else if (symbol.k === 'picture') {
        addSvg(
            group, 'path', {d: 'M-6 -4H6V5H-6Z M-2 -4V-6H2V-4 M2 0A2 2 0 1 1 -2 0A2 2 0 1 1 2 0'});
    } else {
        addSvg(group, 'path', {d: 'M0 -6L6 5H-6Z'});
    }
    return group;
}

function textOfSymbol(symbol) {
    return symbol.k + ' ' + pathOf(rowOfNode[symbol.n]) + '\n' +
        [symbol.x, symbol.y, symbol.z].map(placeText).join(', ');
}

function drawPlan() {
    const svg = makeSvg('svg', {
        viewBox: '0 0 ' + plan.width + ' ' + plan.height,
        tabindex: '0',
        role: 'listbox',
        'aria-label': 'Plan, x to the right and y up',
        id: 'map',
    });
    plan.taken = drawGrid(svg);
    for (const area of plan.areas) {
        const corners = [];
        for (let i = 0; i < area.c.length; i += 2)
            corners.push(toDrawing(area.c[i], area.c[i + 1]).join(','));
        addSvg(svg, 'polygon', {points: corners.join(' '), class: 'area'});
    }
    for (const symbol of plan.symbols) {
        if (!symbol.from) continue;
        const [fromX, fromY] = toDrawing(symbol.from[0], symbol.from[1]);
        const [x, y] = toDrawing(symbol.x, symbol.y);
        addSvg(svg, 'path', {d: 'M' + fromX + ' ' + fromY + 'L' + x + ' ' + y, class: 'way'});
    }
    plan.shapes = plan.symbols.map((symbol, index) => {
        const [x, y] = toDrawing(symbol.x, symbol.y);
        const shape = shapeOf(symbol, index);
        shape.setAttribute('transform', 'translate(' + x + ' ' + y + ')');
        svg.append(shape);
        return {shape, symbol, index, x, y};
    });
    addLabels();
    const hadFocus = document.activeElement && document.activeElement.id === 'map';
    document.getElementById('drawing').replaceChildren(svg);
    listenToPlan(svg);
    markInPlan(view.selected);
    if (hadFocus) svg.focus({preventScroll: true});
}

/** Marks the symbol of the selected element, if it has one. */
function markInPlan(row) {
    const svg = document.getElementById('map');
    if (!svg) return;
    if (plan.chosen < 0 || plan.symbols[plan.chosen].n !== row.node)
        plan.chosen = plan.symbols.findIndex((symbol) => symbol.n === row.node);
    for (const marked of svg.querySelectorAll('.chosen')) {
        marked.classList.remove('chosen');
        marked.setAttribute('aria-selected', 'false');
    }
    svg.removeAttribute('aria-activedescendant');
    const shape = document.getElementById('symbol' + plan.chosen);
    if (!shape) return;
    shape.classList.add('chosen');
    shape.setAttribute('aria-selected', 'true');
    svg.setAttribute('aria-activedescendant', shape.id);
    if (!shape.querySelector('text.name')) addLabels();
}

function choose(index) {
    plan.chosen = (index + plan.symbols.length) % plan.symbols.length;
    const symbol = plan.symbols[plan.chosen];
    document.getElementById('plan-note').textContent = textOfSymbol(symbol);
    bringIntoPlan(symbol);
    showRow(rowOfNode[symbol.n]);
}

function bringIntoPlan(symbol) {
    const [x, y] = toDrawing(symbol.x, symbol.y);
    if (x >= 0 && x <= plan.width && y >= 0 && y <= plan.height) return;
    plan.center = [symbol.x, symbol.y];
    drawPlan();
}

function zoom(factor) {
    plan.isWhole = false;
    plan.scale = limitedScale(plan.scale * (factor || 1));
    if (factor === 0) fitPlan();
    drawPlan();
}

function pan(x, y) {
    const limit = (value) => Math.max(-1e308, Math.min(1e308, value));
    plan.isWhole = false;
    plan.center = [limit(plan.center[0] + x / plan.scale), limit(plan.center[1] + y / plan.scale)];
    drawPlan();
}

function onPlanKey(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) return;
    const steps = {
        ArrowLeft: [-1, -50, 0],
        ArrowRight: [1, 50, 0],
        ArrowUp: [-1, 0, 50],
        ArrowDown: [1, 0, -50]
    };
    const step = steps[event.key];
    if (step && event.shiftKey) pan(step[1], step[2]);
    else if (step) choose(plan.chosen < 0 && step[0] < 0 ? 0 : plan.chosen + step[0]);
    else if (event.key === '+') zoom(1.5);
    else if (event.key === '-') zoom(1 / 1.5);
    else if (event.key === '0') zoom(0);
    else if (event.key === 'Enter' && plan.chosen >= 0)
        jumpTo(rowOfNode[plan.symbols[plan.chosen].n]);
    else return;
    event.preventDefault();
}

// A drag moves the plan, a click on a symbol chooses it. A finger scrolls the page instead as long
// as all of the plan is in sight.
function listenToPlan(svg) {
    svg.style.touchAction = plan.isWhole ? 'auto' : 'none';
    svg.addEventListener('keydown', onPlanKey);
    svg.addEventListener('click', (event) => {
        const shape = event.target.closest('.symbol');
        if (shape) choose(Number(shape.id.slice(6)));
    });
    let from = null;
    svg.addEventListener('pointerdown', (event) => {
        from = [event.clientX, event.clientY];
    });
    svg.addEventListener('pointercancel', () => {
        from = null;
    });
    svg.addEventListener('pointerup', (event) => {
        if (!from) return;
        const move = [event.clientX - from[0], event.clientY - from[1]];
        const ratio = plan.width / svg.getBoundingClientRect().width;
        if (Math.hypot(...move) > 5) pan(-move[0] * ratio, move[1] * ratio);
        from = null;
    });
}

function showPlan() {
    if (plan.symbols.length === 0) return;
    document.getElementById('plan').hidden = false;
    plan.width = Math.max(280, Math.min(900, document.getElementById('drawing').clientWidth));
    plan.height = Math.round(plan.width * 0.62);
    const words = Object.entries(kinds).map(
        ([kind, title]) => [title, plan.symbols.filter((each) => each.k === kind).length]);
    const legend = document.getElementById('plan-legend');
    legend.textContent = words.filter(([, count]) => count > 0)
                             .map(([title, count]) => title + ' ' + count)
                             .join(', ');
    if (data.plan.symbols.length > maxSymbols)
        legend.textContent += ', the first of ' + data.plan.symbols.length;
    legend.textContent += '; x\u00a0\u2192, y\u00a0\u2191';
    fitPlan();
    drawPlan();
}

for (const button of document.querySelectorAll('[data-zoom]'))
    button.addEventListener(
        'click', () => zoom({in : 1.5, out: 1 / 1.5, fit: 0}[button.dataset.zoom]));
