// Works offline once it was open: the service worker keeps all that the page consists of.
import { find } from "./dom.js";
import { say } from "./strings.js";

let isReady = false;

export function tellOffline() {
    find("offline").textContent = isReady ? say("offlineReady") : "";
}

export async function startOffline() {
    if (!("serviceWorker" in navigator)) {
        return;
    }
    try {
        await navigator.serviceWorker.register("service_worker.js");
        await navigator.serviceWorker.ready;
        isReady = true;
        tellOffline();
    } catch {
        // It works online all the same.
    }
}
