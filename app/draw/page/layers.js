// layers.js: check boxes that show and hide the tools in all panels.
//
// A check box and the groups of the drawings that belong to its tool have the same data-tool.
(() => {
    "use strict";
    const boxes = [...document.querySelectorAll("input[data-tool]")];

    const show = (box) => {
        for (const group of document.querySelectorAll(`svg [data-tool="${box.dataset.tool}"]`)) {
            group.style.display = box.checked ? "" : "none";
        }
    };
    const announce = () => document.dispatchEvent(new Event("layerschange"));

    for (const box of boxes) {
        show(box);  // A browser may remember what was checked before the page was loaded again.
        box.addEventListener("change", () => {
            show(box);
            announce();
        });
    }
    for (const button of document.querySelectorAll("button[data-layers]")) {
        button.addEventListener("click", () => {
            for (const box of boxes) {
                box.checked = button.dataset.layers === "all";
                show(box);
            }
            announce();
        });
    }
    for (const bar of document.querySelectorAll(".toolbar")) {
        bar.hidden = false;  // Without scripts its controls would do nothing.
    }
})();
