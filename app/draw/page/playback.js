// playback.js: shows the moves of all panels up to a number that a slider chooses, or plays them.
//
// The paths of a panel are its moves in their order: each "L" of a path in a group "travel" is one
// move, each path in a group "visited" is one step. What is hidden with its tool is left out.
(() => {
    "use strict";
    const bar = document.querySelector(".playback");
    if (!bar) {
        return;
    }
    const slider = bar.querySelector("input");
    const button = bar.querySelector("button");
    const speed = bar.querySelector("select");
    const output = bar.querySelector("output");
    const noun = bar.dataset.noun;
    const markerRadius = 6;
    const stillSteps = 10;  // for people who prefer reduced motion
    const svgElement = (name) => document.createElementNS("http://www.w3.org/2000/svg", name);

    /** A path and its moves: after how many of its pieces each ends, and where. */
    const readPath = (path) => {
        const data = path.getAttribute("d");
        const group = path.closest("[data-tool]");
        if (!path.closest(".travel")) {
            return { path, group, pieces: [data], moves: [{ end: 1 }], shown: 1 };
        }
        const pieces = [...data.matchAll(/([ML])(-?[\d.]+) (-?[\d.]+)/g)];
        const moves = [];
        pieces.forEach((piece, at) => {
            if (piece[1] === "L") {
                moves.push({ end: at + 1, x: piece[2], y: piece[3] });
            }
        });
        return { path, group, pieces: pieces.map((piece) => piece[0]), moves, shown: moves.length };
    };

    /** The moves of one panel, with a faint copy of all of them and a mark for the cutter. */
    class Panel {
        constructor(svg) {
            const travel = svg.querySelector(".travel");
            this.paths = [...svg.querySelectorAll(".travel path, .visited path")].map(readPath);
            this.last = [...svg.querySelectorAll(".after-all")];
            if (travel) {
                this.ghost = travel.cloneNode(true);
                this.ghost.setAttribute("class", "ghost travel");
                travel.before(this.ghost);
                this.ghost.style.display = "none";
                this.addMarker(svg);
            }
            this.choose();
        }

        addMarker(svg) {
            this.marker = svgElement("g");
            const mark = svgElement("g");
            const disc = svgElement("circle");
            mark.setAttribute("class", "mark");
            disc.setAttribute("r", String(markerRadius));
            disc.setAttribute("fill", "#ffffff");
            disc.setAttribute("stroke", "#c4144b");
            disc.setAttribute("stroke-width", "3");
            mark.append(disc);
            this.marker.setAttribute("class", "cutter");
            this.marker.append(mark);
            this.marker.style.display = "none";
            svg.append(this.marker);
        }

        /** Leaves the moves that are not hidden. */
        choose() {
            this.played = this.paths.filter(
                (path) => !path.group || path.group.style.display !== "none");
            this.count = this.played.reduce((sum, path) => sum + path.moves.length, 0);
        }

        show(count) {
            let left = count;
            let current = null;
            for (const path of this.played) {
                const shown = Math.min(left, path.moves.length);
                this.cut(path, shown);
                current = shown > 0 ? { path, move: path.moves[shown - 1] } : current;
                left -= shown;
            }
            const isWhole = count >= this.count;
            for (const element of this.last) {
                element.style.display = isWhole ? "" : "none";
            }
            if (this.ghost) {
                this.ghost.style.display = isWhole ? "none" : "";
                this.marker.style.display = isWhole || !current ? "none" : "";
            }
            if (this.marker && current) {
                this.marker.setAttribute("transform",
                    `translate(${current.move.x} ${current.move.y})`);
            }
            return current && current.path.group ? current.path.group.dataset.tool : undefined;
        }

        cut(path, shown) {
            if (shown !== path.shown) {
                const end = shown > 0 ? path.moves[shown - 1].end : 0;
                path.path.setAttribute("d", path.pieces.slice(0, end).join(""));
                path.shown = shown;
            }
        }
    }

    const panels = [...document.querySelectorAll("svg.panel")].map((svg) => new Panel(svg));
    const total = () => Math.max(...panels.map((panel) => panel.count));
    const still = window.matchMedia("(prefers-reduced-motion: reduce)");

    const nameOf = (tool) => {
        const box = document.querySelector(`input[data-tool="${tool}"]`);
        return box ? `, ${box.dataset.name}` : "";
    };
    const show = () => {
        const count = Number(slider.value);
        let tool;
        for (const panel of panels) {
            tool = panel.show(count);
        }
        const words = `${noun} ${count} of ${total()}${tool === undefined ? "" : nameOf(tool)}`;
        output.textContent = words;
        slider.setAttribute("aria-valuetext", words);
    };

    let playing = false;
    let began = { time: 0, value: 0 };
    const setPlaying = (on) => {
        playing = on;
        button.textContent = on ? "Pause" : "Play";
        output.setAttribute("aria-live", on ? "off" : "polite");
    };
    const showNext = (value) => {
        slider.value = String(Math.min(Math.floor(value), total()));
        show();
        if (Number(slider.value) >= total()) {
            setPlaying(false);
        }
        return playing;
    };
    /** As a film, at a speed that shows short orders move by move. */
    const film = (time) => {
        if (!playing) {
            return;
        }
        began.time = began.time || time;
        const seconds = Math.min(Math.max(total() * 0.1, 4), 40) / Number(speed.value);
        const value = began.value + (time - began.time) / 1000 / seconds * total();
        if (showNext(value)) {
            window.requestAnimationFrame(film);
        }
    };
    /** In a few still pictures, one a second. */
    const slides = () => {
        if (playing && showNext(Number(slider.value) + Math.ceil(total() / stillSteps))) {
            window.setTimeout(slides, 1000 / Number(speed.value));
        }
    };
    const play = () => {
        const value = Number(slider.value);
        began = { time: 0, value: value >= total() ? 0 : value };
        slider.value = String(began.value);
        setPlaying(true);
        show();
        if (still.matches) {
            slides();
        } else {
            window.requestAnimationFrame(film);
        }
    };

    const measure = () => {
        const atEnd = Number(slider.value) >= Number(slider.max);
        slider.max = String(total());
        if (atEnd) {
            slider.value = slider.max;
        }
        show();
    };
    button.addEventListener("click", () => (playing ? setPlaying(false) : play()));
    speed.addEventListener("change", () => {
        began = { time: 0, value: Number(slider.value) };
    });
    slider.addEventListener("input", () => {
        setPlaying(false);
        show();
    });
    document.addEventListener("layerschange", () => {
        for (const panel of panels) {
            panel.choose();
        }
        measure();
    });
    slider.value = slider.max = String(total());
    setPlaying(false);
    measure();
})();
