// zoom.js: pans and zooms all panels of the page together.
//
// Panels show the same part at the same scale, so one view holds for all: its middle and how many
// times it is enlarged. A panel is moved with the pointer, with two fingers, with the wheel (while
// Ctrl is down, or after a click into the panel) and with the keys + - 0 and the arrows.
(() => {
    "use strict";
    const largestZoom = 200;
    const largestMark = 1.5;  // times its size in the drawing
    const panels = [...document.querySelectorAll("svg.panel")];
    if (panels.length === 0) {
        return;
    }
    const base = panels[0].viewBox.baseVal;
    const whole = { x: base.x, y: base.y, width: base.width, height: base.height };
    const view = { x: whole.x + whole.width / 2, y: whole.y + whole.height / 2, zoom: 1 };

    const limited = (value, low, high) => Math.min(Math.max(value, low), high);

    /** Marks and labels keep their size, but on a small drawing they shrink with it in part. */
    const scaleMarks = (svg, width) => {
        const pixels = svg.clientWidth > 0 ? svg.clientWidth / width : 1;
        svg.style.setProperty("--mark-scale", String(Math.min(largestMark, 1 / pixels)));
    };

    const show = () => {
        view.zoom = limited(view.zoom, 1, largestZoom);
        const width = whole.width / view.zoom;
        const height = whole.height / view.zoom;
        view.x = limited(view.x, whole.x + width / 2, whole.x + whole.width - width / 2);
        view.y = limited(view.y, whole.y + height / 2, whole.y + whole.height - height / 2);
        const box = [view.x - width / 2, view.y - height / 2, width, height];
        for (const svg of panels) {
            svg.setAttribute("viewBox", box.map((value) => +value.toFixed(4)).join(" "));
            svg.parentElement.classList.toggle("zoomed", view.zoom > 1);
            scaleMarks(svg, width);
        }
    };

    /** Enlarges so many times; the given point of the drawing stays where it is. */
    const zoomAt = (point, times) => {
        const before = view.zoom;
        view.zoom = limited(view.zoom * times, 1, largestZoom);
        const kept = before / view.zoom;
        view.x = point.x + (view.x - point.x) * kept;
        view.y = point.y + (view.y - point.y) * kept;
        show();
    };
    const pan = (dx, dy) => {
        view.x += dx;
        view.y += dy;
        show();
    };
    const reset = () => {
        view.zoom = 1;
        show();
    };

    const pointOf = (svg, event) =>
        new DOMPoint(event.clientX, event.clientY).matrixTransform(svg.getScreenCTM().inverse());

    const keys = {
        "+": () => zoomAt(view, 1.5),
        "=": () => zoomAt(view, 1.5),
        "-": () => zoomAt(view, 1 / 1.5),
        "0": reset,
        ArrowLeft: () => pan(-whole.width / view.zoom / 8, 0),
        ArrowRight: () => pan(whole.width / view.zoom / 8, 0),
        ArrowUp: () => pan(0, -whole.height / view.zoom / 8),
        ArrowDown: () => pan(0, whole.height / view.zoom / 8),
    };
    const onKey = (event) => {
        const action = keys[event.key];
        if (action && !event.ctrlKey && !event.metaKey && !event.altKey) {
            event.preventDefault();
            action();
        }
    };

    const onWheel = (svg, event) => {
        if (event.ctrlKey || event.metaKey || document.activeElement === svg.parentElement) {
            event.preventDefault();
            zoomAt(pointOf(svg, event), Math.exp(-limited(event.deltaY, -200, 200) * 0.003));
        }
    };

    /** One pointer drags; two enlarge by their distance about the point between them. */
    const followPointers = (svg) => {
        const down = new Map();
        const frame = svg.parentElement;
        const spread = () => {
            const [a, b] = [...down.values()];
            return Math.hypot(a.clientX - b.clientX, a.clientY - b.clientY);
        };
        frame.addEventListener("pointerdown", (event) => {
            if (event.button === 0) {
                down.set(event.pointerId, event);
                frame.setPointerCapture(event.pointerId);
                frame.classList.add("dragged");
            }
        });
        frame.addEventListener("pointermove", (event) => {
            const last = down.get(event.pointerId);
            if (!last) {
                return;
            }
            if (down.size === 1) {
                const from = pointOf(svg, last);
                const to = pointOf(svg, event);
                down.set(event.pointerId, event);
                pan(from.x - to.x, from.y - to.y);
            } else if (down.size === 2) {
                const before = spread();
                down.set(event.pointerId, event);
                zoomAt(pointOf(svg, event), before > 0 ? spread() / before : 1);
            }
        });
        for (const name of ["pointerup", "pointercancel"]) {
            frame.addEventListener(name, (event) => {
                down.delete(event.pointerId);
                frame.classList.toggle("dragged", down.size > 0);
            });
        }
    };

    for (const svg of panels) {
        const frame = svg.parentElement;
        frame.addEventListener("keydown", onKey);
        frame.addEventListener("wheel", (event) => onWheel(svg, event), { passive: false });
        frame.addEventListener("dblclick", (event) => zoomAt(pointOf(svg, event), 2));
        followPointers(svg);
    }
    const buttons = { in: () => zoomAt(view, 1.5), out: () => zoomAt(view, 1 / 1.5), whole: reset };
    for (const button of document.querySelectorAll("button[data-zoom]")) {
        button.addEventListener("click", buttons[button.dataset.zoom]);
    }
    window.addEventListener("resize", show);
    show();
})();
