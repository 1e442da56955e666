// model.js: draws a triangle model into the canvas of the page, turned with the mouse.
//
// Triangles are drawn one by one with a depth for each pixel, so no graphics processor is needed.
// The page has the data in base64: nodes as three 16-bit numbers, triangles and edges as 32-bit
// indices of nodes. A view has three directions in the model: to the right, upwards, towards the
// viewer. While the model moves it is drawn with fewer pixels, and finer when it is at rest.
(() => {
    "use strict";
    const canvas = document.querySelector("canvas.model");
    if (!canvas) {
        return;
    }
    const largestZoom = 60;
    const mostPixels = 3e6;
    const outside = [150, 172, 196];
    const inside = [222, 160, 84];
    const light = [-0.36, 0.48, 0.8];
    const shades = 255;

    const bytesOf = (text) => Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0)).buffer;
    const data = document.querySelector(".model-data").dataset;
    const steps = new Uint16Array(bytesOf(data.nodes));
    const triangles = new Uint32Array(bytesOf(data.triangles));
    const sharp = new Uint32Array(bytesOf(data.sharp));
    const free = new Uint32Array(bytesOf(data.free));
    const count = steps.length / 3;

    const packed = (r, g, b) => ((255 << 24) | (b << 16) | (g << 8) | r) >>> 0;
    const paletteOf = (base) => Uint32Array.from({ length: shades + 1 }, (_, i) => {
        const lit = i / shades;
        const gloss = 0.18 * lit ** 3;
        const [r, g, b] = base.map((part) => {
            const value = part * (0.5 + 0.5 * lit);
            return Math.round(value + (255 - value) * gloss);
        });
        return packed(r, g, b);
    });
    const palettes = [paletteOf(outside), paletteOf(inside)];
    const sharpColour = packed(45, 58, 74);
    const freeColour = packed(214, 20, 30);
    const hiddenColour = packed(240, 130, 130);

    /** Middle and half diagonal of the model, in steps. */
    const [middle, radius] = (() => {
        const low = [Infinity, Infinity, Infinity];
        const high = [-Infinity, -Infinity, -Infinity];
        for (let i = 0; i < steps.length; ++i) {
            low[i % 3] = Math.min(low[i % 3], steps[i]);
            high[i % 3] = Math.max(high[i % 3], steps[i]);
        }
        const size = Math.hypot(...high.map((value, i) => value - low[i]));
        return [high.map((value, i) => (value + low[i]) / 2), Math.max(size / 2, 1)];
    })();

    const axesOf = (text) => {
        const numbers = text.split(" ").map(Number);
        return [numbers.slice(0, 3), numbers.slice(3, 6), numbers.slice(6, 9)];
    };
    const start = canvas.dataset.axes;
    const view = { axes: axesOf(start), zoom: 1, x: 0, y: 0 };

    // The pixels, and what belongs to them; made anew when the size changes.
    let width = 0;
    let height = 0;
    let image, colours, depths;
    const context = canvas.getContext("2d");
    const placeX = new Float32Array(count);
    const placeY = new Float32Array(count);
    const placeZ = new Float32Array(count);

    const resize = (fineness) => {
        const area = Math.max(canvas.clientWidth * canvas.clientHeight, 1);
        const ratio = Math.min(fineness * devicePixelRatio, Math.sqrt(mostPixels / area));
        const newWidth = Math.max(Math.round(canvas.clientWidth * ratio), 1);
        const newHeight = Math.max(Math.round(canvas.clientHeight * ratio), 1);
        if (newWidth !== width || newHeight !== height) {
            width = canvas.width = newWidth;
            height = canvas.height = newHeight;
            image = context.createImageData(width, height);
            colours = new Uint32Array(image.data.buffer);
            depths = new Float32Array(width * height);
        }
        return ratio;
    };

    const placeNodes = () => {
        const scale = 1.08 * view.zoom * Math.min(width, height) / (2 * radius);
        const [right, up, towards] = view.axes;
        const dot = (axis, x, y, z) => axis[0] * x + axis[1] * y + axis[2] * z;
        for (let i = 0; i < count; ++i) {
            const x = steps[3 * i] - middle[0];
            const y = steps[3 * i + 1] - middle[1];
            const z = steps[3 * i + 2] - middle[2];
            placeX[i] = width / 2 + view.x * height + dot(right, x, y, z) * scale;
            placeY[i] = height / 2 + view.y * height - dot(up, x, y, z) * scale;
            placeZ[i] = dot(towards, x, y, z) * scale;
        }
    };

    /** The x where an edge passes the height y; the same for both triangles beside the edge. */
    const passing = (a, b, y) => (placeY[b] < placeY[a] ? passing(b, a, y)
        : placeX[a] + (placeX[b] - placeX[a]) * ((y - placeY[a]) / (placeY[b] - placeY[a])));

    const drawTriangle = (a, b, c) => {
        const ux = placeX[b] - placeX[a], uy = placeY[a] - placeY[b], uz = placeZ[b] - placeZ[a];
        const vx = placeX[c] - placeX[a], vy = placeY[a] - placeY[c], vz = placeZ[c] - placeZ[a];
        const nx = uy * vz - uz * vy, ny = uz * vx - ux * vz, nz = ux * vy - uy * vx;
        const length = Math.hypot(nx, ny, nz);
        if (!(length > 0) || nz === 0) {
            return;
        }
        const side = nz < 0 ? 1 : 0;
        const lit = (light[0] * nx + light[1] * ny + light[2] * nz) / length * (side ? -1 : 1);
        const colour = palettes[side][Math.round(Math.max(lit, 0) * shades)];
        const byX = -nx / nz;
        const byY = ny / nz;  // downwards
        const nearest = Math.max(placeZ[a], placeZ[b], placeZ[c]);
        const top = Math.min(placeY[a], placeY[b], placeY[c]);
        const bottom = Math.max(placeY[a], placeY[b], placeY[c]);
        const endRow = Math.min(Math.ceil(bottom - 0.5), height);
        for (let row = Math.max(Math.ceil(top - 0.5), 0); row < endRow; ++row) {
            const y = row + 0.5;
            let low = Infinity;
            let high = -Infinity;
            const note = (from, to) => {
                if ((placeY[from] <= y) !== (placeY[to] <= y)) {
                    const x = passing(from, to, y);
                    low = Math.min(low, x);
                    high = Math.max(high, x);
                }
            };
            note(a, b);
            note(b, c);
            note(c, a);
            const first = Math.max(Math.ceil(low - 0.5), 0);
            const end = Math.min(Math.ceil(high - 0.5), width);
            let depth = placeZ[a] + byX * (first + 0.5 - placeX[a]) + byY * (y - placeY[a]);
            for (let at = row * width + first; at < row * width + end; ++at, depth += byX) {
                const clipped = Math.min(depth, nearest);
                if (clipped > depths[at]) {
                    depths[at] = clipped;
                    colours[at] = colour;
                }
            }
        }
    };

    const drawLine = (a, b, pen) => {
        const dx = placeX[b] - placeX[a], dy = placeY[b] - placeY[a], dz = placeZ[b] - placeZ[a];
        const parts = Math.min(Math.ceil(Math.max(Math.abs(dx), Math.abs(dy), 1)), 8000);
        for (let i = 0; i <= parts; ++i) {
            if (pen.dash > 0 && Math.floor(i / pen.dash) % 2 !== 0) {
                continue;
            }
            const z = placeZ[a] + dz * i / parts + pen.lift;
            const left = Math.ceil(placeX[a] + dx * i / parts - pen.width / 2 - 0.5);
            const top = Math.ceil(placeY[a] + dy * i / parts - pen.width / 2 - 0.5);
            for (let y = Math.max(top, 0); y < Math.min(top + pen.width, height); ++y) {
                for (let x = Math.max(left, 0); x < Math.min(left + pen.width, width); ++x) {
                    const at = y * width + x;
                    if ((z < depths[at]) === pen.behind) {
                        colours[at] = pen.colour;
                    }
                }
            }
        }
    };
    const drawLines = (edges, pen) => {
        for (let i = 0; i < edges.length; i += 2) {
            drawLine(edges[i], edges[i + 1], pen);
        }
    };

    const draw = (fineness) => {
        const ratio = resize(fineness);
        colours.fill(0);
        depths.fill(-Infinity);
        placeNodes();
        for (let i = 0; i < triangles.length; i += 3) {
            drawTriangle(triangles[i], triangles[i + 1], triangles[i + 2]);
        }
        const lift = 0.004 * Math.min(width, height) * view.zoom;
        const wide = (pixels) => Math.max(Math.round(pixels * ratio), 1);
        const pen = (colour, pixels, behind, dash) =>
            ({ colour, width: wide(pixels), lift, behind, dash: dash && wide(dash) });
        drawLines(sharp, pen(sharpColour, 1, false, 0));
        drawLines(free, pen(hiddenColour, 1.5, true, 5));
        drawLines(free, pen(freeColour, 2.5, false, 0));
        context.putImageData(image, 0, 0);
    };

    // One frame at a time; the fine one when nothing has moved for a while.
    let isAsked = false;
    let rest = 0;
    const show = () => {
        clearTimeout(rest);
        rest = setTimeout(() => draw(2), 180);
        if (!isAsked) {
            isAsked = true;
            requestAnimationFrame(() => {
                isAsked = false;
                draw(1);
            });
        }
    };

    const limited = (value, low, high) => Math.min(Math.max(value, low), high);
    const mixed = (a, b, cosine, sine) => a.map((value, i) => value * cosine + b[i] * sine);
    const unit = (vector) => vector.map((value) => value / Math.hypot(...vector));
    const cross = (a, b) => [a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2],
        a[0] * b[1] - a[1] * b[0]];

    /** Turns the model to the right and downwards, in radians. */
    const turn = (toRight, downwards) => {
        let [right, up, towards] = view.axes;
        const turned = mixed(towards, right, Math.cos(toRight), -Math.sin(toRight));
        right = mixed(right, towards, Math.cos(toRight), Math.sin(toRight));
        up = unit(mixed(up, turned, Math.cos(downwards), -Math.sin(downwards)));
        right = unit(right.map((value, i) => value - up[i] * (right[0] * up[0] + right[1] * up[1] +
            right[2] * up[2])));
        towards = cross(right, up);
        view.axes = [right, up, towards];
        show();
    };
    const zoomBy = (times) => {
        const zoom = limited(view.zoom * times, 0.2, largestZoom);
        view.x *= zoom / view.zoom;
        view.y *= zoom / view.zoom;
        view.zoom = zoom;
        show();
    };
    const move = (dx, dy) => {
        view.x = limited(view.x + dx, -view.zoom, view.zoom);
        view.y = limited(view.y + dy, -view.zoom, view.zoom);
        show();
    };
    const showWhole = () => {
        Object.assign(view, { zoom: 1, x: 0, y: 0 });
        show();
    };

    const keys = {
        ArrowLeft: () => turn(-0.15, 0),
        ArrowRight: () => turn(0.15, 0),
        ArrowUp: () => turn(0, -0.15),
        ArrowDown: () => turn(0, 0.15),
        "+": () => zoomBy(1.25),
        "=": () => zoomBy(1.25),
        "-": () => zoomBy(0.8),
        "0": () => {
            view.axes = axesOf(start);
            showWhole();
        },
    };
    canvas.addEventListener("keydown", (event) => {
        const action = keys[event.key];
        if (action && !event.ctrlKey && !event.metaKey && !event.altKey) {
            event.preventDefault();
            action();
        }
    });
    canvas.addEventListener("wheel", (event) => {
        if (event.ctrlKey || event.metaKey || document.activeElement === canvas) {
            event.preventDefault();
            zoomBy(Math.exp(-limited(event.deltaY, -200, 200) * 0.003));
        }
    }, { passive: false });

    const down = new Map();
    const spread = () => {
        const [a, b] = [...down.values()];
        return Math.hypot(a.clientX - b.clientX, a.clientY - b.clientY);
    };
    canvas.addEventListener("pointerdown", (event) => {
        if (event.button === 0) {
            down.set(event.pointerId, event);
            canvas.setPointerCapture(event.pointerId);
            canvas.parentElement.classList.add("dragged");
        }
    });
    canvas.addEventListener("pointermove", (event) => {
        const last = down.get(event.pointerId);
        if (!last) {
            return;
        }
        const before = down.size === 2 ? spread() : 0;
        down.set(event.pointerId, event);
        const dx = event.clientX - last.clientX;
        const dy = event.clientY - last.clientY;
        if (down.size === 2) {
            zoomBy(before > 0 ? spread() / before : 1);
        } else if (event.shiftKey) {
            move(dx / canvas.clientHeight, dy / canvas.clientHeight);
        } else {
            turn(dx * 0.01, dy * 0.01);
        }
    });
    for (const name of ["pointerup", "pointercancel"]) {
        canvas.addEventListener(name, (event) => {
            down.delete(event.pointerId);
            canvas.parentElement.classList.toggle("dragged", down.size > 0);
        });
    }
    for (const button of document.querySelectorAll("button[data-axes]")) {
        button.addEventListener("click", () => {
            view.axes = axesOf(button.dataset.axes);
            showWhole();
        });
    }
    for (const button of document.querySelectorAll("button[data-model-zoom]")) {
        const times = Number(button.dataset.modelZoom);
        button.addEventListener("click", () => (times > 0 ? zoomBy(times) : showWhole()));
    }
    window.addEventListener("resize", show);
    draw(1);
    show();
})();
