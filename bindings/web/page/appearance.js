// Language and colours: all that the page remembers.
import { find } from "./dom.js";
import { translatePage, useLanguage } from "./strings.js";

// Storage can be forbidden; then the choice holds while the page is open.
function remembered(key) {
    try {
        return localStorage.getItem(key);
    } catch {
        return null;
    }
}

function remember(key, value) {
    try {
        localStorage.setItem(key, value);
    } catch {
        // as told above
    }
}

function apply(language, theme) {
    useLanguage(language);
    document.documentElement.lang = language;
    document.documentElement.dataset.theme = theme;
    document.title = language === "ja" ? "jkc — 日本語の文字コード変換" : "jkc — Japanese text conversion";
    translatePage();
}

/** Calls `changed` when the language has. */
export function startAppearance(changed) {
    const language = find("language");
    const theme = find("theme");
    language.value = remembered("language") ?? (navigator.language.startsWith("ja") ? "ja" : "en");
    theme.value = remembered("theme") ?? "auto";
    apply(language.value, theme.value);
    language.onchange = () => {
        remember("language", language.value);
        apply(language.value, theme.value);
        changed();
    };
    theme.onchange = () => {
        remember("theme", theme.value);
        apply(language.value, theme.value);
    };
}
