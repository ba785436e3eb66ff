// Puts the parts of the page together.
import { startAppearance } from "./appearance.js";
import { redraw, show } from "./detail_view.js";
import { find } from "./dom.js";
import { ask } from "./engine.js";
import { startIntake } from "./intake.js";
import { add, changed, clear, items, whenChanged } from "./items.js";
import { startJobs, stop } from "./jobs.js";
import { select, startList } from "./list_view.js";
import { look } from "./looking.js";
import { startOffline, tellOffline } from "./offline.js";
import { redrawPaste, startPaste } from "./paste_view.js";
import { saveAll } from "./saving.js";
import { say } from "./strings.js";
import { startTarget } from "./target.js";

function drawFrame() {
    find("work").hidden = items.length === 0;
    document.body.classList.toggle("working", items.length > 0);
    find("save-all").textContent = say("saveAll");
}

startAppearance(() => {
    drawFrame();
    changed();
    redraw();
    redrawPaste();
    tellOffline();
});
startJobs();
startList((item) => {
    show(item);
    look(); // those that still wait, where it was stopped
});
startPaste();
whenChanged((item) => item ?? drawFrame());
drawFrame();
find("clear").onclick = () => {
    stop();
    clear();
    show(null);
    find("choose-files").focus();
};

try {
    startTarget(await ask("encodings"), redraw, saveAll);
    startIntake((found) => {
        const isFirst = items.length === 0;
        add(found);
        if (isFirst && items.length > 0) {
            select(items[0]);
        }
        look();
    });
    startOffline();
    document.body.classList.add("ready");
} catch (error) {
    find("trouble").textContent = say("noWorker", error.message);
    find("trouble").hidden = false;
}
