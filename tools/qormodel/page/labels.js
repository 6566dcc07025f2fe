// The names beside the symbols of the plan.

const maxLabels = 100;
const maxTries = 1000;  // symbols for whose names a place is sought
const lineHeight = 15;

// Where a name may stand beside its symbol: the side to which it runs, and its base line.
const nearPlaces = [[1, -6], [-1, -6], [1, 14], [-1, 14], [0, -13], [0, 23]];

function shortName(symbol) {
    const letters = [...nameOf(rowOfNode[symbol.n])];
    return letters.length > 30 ? letters.slice(0, 29).join('') + '\u2026' : letters.join('');
}

// About, and rather too wide.
function widthOf(text) {
    return [...text].reduce((sum, each) => sum + (each.codePointAt(0) > 0x2e7f ? 13 : 7.2), 0);
}

function boxOf(drawn, width, [side, line], distance) {
    const left = drawn.x + (side === 0 ? -width / 2 : side > 0 ? distance : -distance - width);
    return {left, right: left + width, top: drawn.y + line - 11, bottom: drawn.y + line + 4};
}

function isFreePlace(box) {
    return box.left >= 2 && box.right <= plan.width - 2 && box.top >= 2 &&
        box.bottom <= plan.height - 2 && !plan.labelBoxes.some((other) => isOver(box, other));
}

// Higher and lower ones, from which a line leads to the symbol.
function* farPlaces() {
    for (const distance of [20, 80, 160, 240])
        for (let i = 1; i * lineHeight < plan.height; ++i)
            for (const side of [1, -1])
                for (const sign of [1, -1]) yield [side, sign * i * lineHeight, distance];
}

function placeFor(drawn, width, isNeeded) {
    for (const place of nearPlaces)
        if (isFreePlace(boxOf(drawn, width, place, 9))) return [...place, 9];
    if (!isNeeded) return null;
    for (const place of farPlaces())
        if (isFreePlace(boxOf(drawn, width, place, place[2]))) return place;
    return null;
}

function addLabel(drawn, isNeeded) {
    const {shape, symbol} = drawn;
    const sign = signOfSymbol(symbol);
    const text = (sign ? signs[sign].shown + ' ' : '') + shortName(symbol);
    const width = widthOf(text);
    const place = placeFor(drawn, width, isNeeded);
    if (!place) return false;
    const [side, line, distance] = place;
    plan.labelBoxes.push(boxOf(drawn, width, place, distance));
    if (!nearPlaces.some((each) => each[1] === line && distance === 9))
        addSvg(shape, 'path', {
            d: 'M' + side * 6 + ' ' + Math.sign(line) * 3 + 'L' + side * (distance - 2) + ' ' +
                (line - 4),
            class: 'leader label'
        });
    addSvg(shape, 'text', {
        x: side * distance,
        y: line,
        'text-anchor': side === 0 ? 'middle' : side > 0 ? 'start' : 'end',
        class: 'name label'
    }).textContent = text;
    return true;
}

/**
 * Writes names where they lie upon no symbol, no other name and no coordinate: that of what is
 * chosen first, then those of what differs, which have at least their sign in any case.
 */
function addLabels() {
    for (const former of document.querySelectorAll('#map .label')) former.remove();
    plan.labelBoxes = plan.taken.concat(plan.shapes.map(
        ({x, y}) => ({left: x - 8, right: x + 8, top: y - 8, bottom: y + 8})));
    const rank = ({symbol, index}) => index === plan.chosen ? 0 : signOfSymbol(symbol) ? 1 : 2;
    const inSight = plan.shapes.filter(
        ({x, y}) => x >= 0 && x <= plan.width && y >= 0 && y <= plan.height);
    inSight.sort((a, b) => rank(a) - rank(b));
    let numLabels = 0;
    inSight.forEach((drawn, tried) => {
        const isTried = numLabels < maxLabels && tried < maxTries;
        const hasName = isTried && addLabel(drawn, rank(drawn) < 2);
        if (hasName) ++numLabels;
        const sign = signOfSymbol(drawn.symbol);
        if (!hasName && sign)
            addSvg(drawn.shape, 'text', {x: 9, y: -6, class: 'label'}).textContent =
                signs[sign].shown;
    });
}
