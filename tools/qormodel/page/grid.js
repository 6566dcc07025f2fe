// The grid of the plan with its coordinates, and its scale.

/** A coordinate with all digits that matter on the ground, also far away from the origin. */
function placeText(value) {
    return String(Number(value.toPrecision(10)));
}

/** A coordinate of a grid line: as many decimals as lines that are `step` apart need. */
function gridText(value, step) {
    if (Math.abs(value) >= 1e9 || step < 1e-6) return placeText(value);
    return value.toFixed(Math.max(0, -Math.floor(Math.log10(step))));
}

/** How far grid lines are apart in the model: 1, 2 or 5 times a power of ten. */
function gridStep() {
    const wanted = 80 / plan.scale;
    const power = 10 ** Math.floor(Math.log10(wanted));
    return power * ([1, 2, 5].find((each) => each * power >= wanted) || 10);
}

// The coordinates of the lines along one side of the drawing. All that is counted is counted in
// steps: lengths in the model may be too great for a number.
function gridLines(center, length, step) {
    const numSteps = length / (plan.scale * step);
    const first = Math.ceil(center / step - numSteps / 2);
    const lines = [];
    for (let i = 0; i < Math.min(40, Math.floor(numSteps) + 1); ++i) lines.push((first + i) * step);
    return lines.filter(Number.isFinite);
}

/** Draws lines, coordinates and scale. Returns the boxes that the coordinates take. */
function drawGrid(svg) {
    const step = gridStep();
    const grid = addSvg(svg, 'g', {class: 'grid'});
    const texts = addSvg(svg, 'g', {class: 'coordinates', 'aria-hidden': 'true'});
    const taken = [];
    const write = (x, y, value) => {
        const text = gridText(value, step);
        const box = {left: x, right: x + 7 * text.length + 4, top: y - 11, bottom: y + 3};
        if (box.right > plan.width || taken.some((other) => isOver(box, other))) return;
        taken.push(box);
        addSvg(texts, 'text', {x, y}).textContent = text;
    };
    for (const value of gridLines(plan.center[0], plan.width, step)) {
        const x = toDrawing(value, 0)[0];
        addSvg(grid, 'path', {d: 'M' + x + ' 0V' + plan.height});
        write(x + 3, 12, value);
    }
    for (const value of gridLines(plan.center[1], plan.height, step)) {
        const y = toDrawing(0, value)[1];
        addSvg(grid, 'path', {d: 'M0 ' + y + 'H' + plan.width});
        if (y > 30 && y < plan.height - 30) write(3, y - 3, value);
    }
    const bar = addSvg(svg, 'g', {class: 'scale'});
    addSvg(bar, 'path', {d: 'M12 ' + (plan.height - 16) + 'v6h' + step * plan.scale + 'v-6'});
    addSvg(bar, 'text', {x: 16, y: plan.height - 18}).textContent = numberText(step);
    return taken;
}

function isOver(box, other) {
    return box.left < other.right && other.left < box.right && box.top < other.bottom &&
        other.top < box.bottom;
}
