// What the page says: in English, in Japanese. {0} is the first value.
const strings = {
    skip: ["Skip to the page", "本文へ移動"],
    tagline: ["Japanese text, in the right encoding", "日本語の文字コードを調べ、変換する"],
    language: ["Language", "言語"],
    theme: ["Colours", "配色"],
    themeAuto: ["Auto", "自動"],
    themeLight: ["Light", "ライト"],
    themeDark: ["Dark", "ダーク"],

    dropTitle: ["Drop files or a folder here", "ファイルかフォルダーをここにドロップ"],
    // with hyphens at which no line ends
        dropHint: ["Text in Shift_JIS, EUC‑JP, ISO‑2022‑JP, UTF‑8 or UTF‑16, of any size.", "Shift_JIS・EUC‑JP・ISO‑2022‑JP・UTF‑8・UTF‑16 のテキスト。大きさに制限はありません。"],
    chooseFiles: ["Choose files", "ファイルを選ぶ"],
    chooseFolder: ["Choose a folder", "フォルダーを選ぶ"],
    private: ["Your files stay on this device. This page sends nothing anywhere.", "ファイルはこの端末から出ません。このページは何も送信しません。"],

    mendTitle: ["Mend garbled text", "文字化けを直す"],
    mendHint: ["Paste text that has turned into nonsense.", "文字化けしたテキストを貼り付けてください。"],
    mendNone: ["No misreading found: this text is sound, or no way back is known.", "読み間違いは見つかりません。正しいテキストか、元に戻す方法がわからないものです。"],
    mendProposal: ["This may be the text", "元のテキストの候補"],
    mendHow: ["How it was broken: {0}", "壊れた経緯：{0}"],
    mendStep: ["{0} read as {1}", "{0} を {1} として読んだ"],
    mendThen: [", then ", "、次に "],
    mendConfidence: ["{0} % sure", "確信度 {0} %"],
    mendLost: ["Characters that did not come back (�): {0}", "戻らなかった文字（�）：{0}"],
    mendCopy: ["Copy", "コピー"],
    mendCopied: ["Copied", "コピーしました"],
    mendFile: ["This file looks garbled", "このファイルは文字化けしているようです"],
    mendSave: ["Save the mended text", "直したテキストを保存"],
    mendNotApplied: ["A proposal only: nothing is changed unless you save it.", "提案です。保存しない限り何も変わりません。"],

    workTitle: ["Your files", "ファイル"],
    targetTitle: ["Convert to", "変換先"],
    to: ["Convert to", "変換先"],
    eol: ["Line ends", "改行"],
    eolKeep: ["Keep", "そのまま"],
    onLoss: ["What the target lacks", "変換先にない文字"],
    lossReplace: ["Replace (? or �)", "置き換え（? か �）"],
    lossEscape: ["Escape (&#x20BB7;)", "&#x20BB7; の形"],
    lossOmit: ["Leave out", "省く"],
    lossStop: ["Leave out the file", "ファイルごと除く"],
    bom: ["BOM", "BOM を付ける"],
    compose: ["Join か ゙ to が", "濁点を合成"],
    saveAll: ["Convert all to a zip", "すべて変換し zip で保存"],
    saveOne: ["Convert and save", "変換して保存"],
    cancel: ["Cancel", "中止"],

    listTitle: ["{0} files", "{0} 個のファイル"],
    clear: ["Clear", "消去"],
    back: ["Back", "前へ"],
    on: ["Next", "次へ"],
    listPlace: ["{0}–{1} of {2}", "{0}～{1} / {2}"],
    waiting: ["waiting", "待機中"],
    looking: ["looking", "判定中"],
    converting: ["converting", "変換中"],
    converted: ["converted", "変換済み"],
    failed: ["failed: {0}", "失敗：{0}"],
    leftOut: ["left out", "除外"],
    unreadable: ["cannot be read: {0}", "読めません：{0}"],
    garbled: ["garbled?", "文字化け？"],
    lost: ["{0} lost", "欠落 {0}"],

    undecided: ["Undecided", "未確定"],
    unknown: ["No single encoding", "該当なし"],
    binary: ["Not text", "テキストではない"],
    empty: ["Empty", "空"],
    confidence: ["{0} % sure", "確信度 {0} %"],
    byRule: ["Decided by: {0}", "判定の根拠：{0}"],
    chosen: ["Read as you chose", "選んだ文字コードで読んでいます"],
    openBetween: ["As likely as each other: {0}. Look which reading makes sense, and choose it.", "同じくらい確からしい候補：{0}。意味の通る方を選んでください。"],
    unknownHint: ["No encoding fits all of it: several may be mixed, or it is damaged. You can choose one to read it in.", "全体に合う文字コードがありません。混在か、破損の可能性があります。読む文字コードを選べます。"],
    binaryHint: ["This is no text, and is not converted.", "テキストではないので、変換しません。"],
    emptyHint: ["There is nothing in this file.", "このファイルには何もありません。"],
    readAs: ["Read as", "読む文字コード"],
    asDetected: ["as detected", "判定どおり"],
    notChosen: ["not chosen yet", "未選択"],
    readAsThis: ["Read as {0}", "{0} として読む"],
    noLineEnds: ["no line ends", "改行なし"],
    mixedEnds: ["mixed line ends: {0}", "改行の混在：{0}"],
    withBom: ["byte-order mark", "BOM あり"],

    evidence: ["Evidence", "判定の材料"],
    evidenceNone: ["The bytes themselves tell: no candidates had to be weighed.", "バイト列だけで決まり、候補を比べる必要はありませんでした。"],
    evidenceHint: ["Bytes beyond ASCII that each candidate can read. One that cannot read some is soon out, and counted no further (+).", "ASCII 以外のバイトのうち、各候補で読めるもの。読めないものが続いた候補は外れ、それ以上数えません（+）。"],
    candidate: ["Candidate", "候補"],
    fits: ["Fit", "合う"],
    kana: ["Kana", "うち仮名"],
    illFormed: ["Do not fit", "合わない"],
    firstError: ["First at", "最初の位置"],
    bytes: ["{0} bytes", "{0} バイト"],
    tie: ["tie", "同等"],

    text: ["Text", "テキスト"],
    textHelp: ["Point at a character, or move with the arrow keys, to see its bytes.", "文字を指すか、矢印キーで移動すると、そのバイトを表示します。"],
    textOf: ["Text of {0}", "{0} のテキスト"],
    windowPlace: ["Bytes {0}–{1} of {2}", "{0}～{1} バイト目 / {2}"],
    hexAt: ["Byte {0} (0x{1})", "{0} バイト目（0x{1}）"],
    endOfLine: ["line end", "改行"],
    losses: ["What would be lost", "失われるもの"],
    lossesNone: ["Nothing: every character comes through.", "ありません。すべての文字が変換されます。"],
    lossesChecking: ["Looking…", "調べています…"],
    lossesCount: ["{0} in all", "全部で {0} 個"],
    lossesMore: ["the first {0} are listed", "最初の {0} 個を表示"],
    lossPlace: ["line {0}, column {1}", "{0} 行 {1} 桁"],
    "ill-formed": ["ill-formed bytes", "不正なバイト列"],
    unmappable: ["not in {0}", "{0} にない文字"],
    truncated: ["cut off in a character", "文字の途中で終わっている"],

    progressLooking: ["Looking at {0} of {1}", "{1} 個中 {0} 個目を判定中"],
    progressConverting: ["Converting {0} of {1}", "{1} 個中 {0} 個目を変換中"],
    looked: ["{0} files looked at", "{0} 個のファイルを判定しました"],
    saved: ["{0} saved", "{0} 個を保存しました"],
    savedSome: ["{0} saved, {1} left out: undecided, no text, or with losses", "{0} 個を保存、{1} 個は除外しました（未確定、テキストでない、または欠落あり）"],
    nothingToSave: ["There is nothing to convert yet.", "変換できるファイルがありません。"],
    stopped: ["Stopped", "中止しました"],
    noWorker: ["The page cannot work: {0}", "動作できません：{0}"],
    footer: ["Works offline once it has been opened. Free software under the MIT licence.", "一度開けばオフラインでも使えます。MIT ライセンスの自由なソフトウェアです。"],
    offlineReady: ["Ready for offline use.", "オフラインの準備ができました。"],
};

// The rules by which the library decides, by its names for them.
const rules = {
    "empty": "空",
    "byte-order mark": "BOM",
    "escape sequences": "エスケープシーケンス",
    "escape sequences and more": "エスケープシーケンスとほかのもの",
    "7-bit text": "7 ビットのテキスト",
    "well-formed UTF-8": "正しい UTF-8",
    "UTF-16 characters": "UTF-16 の文字",
    "NUL bytes": "NUL",
    "control bytes": "制御文字",
    "noise": "雑音",
    "mixed encodings": "文字コードの混在",
    "no encoding fits": "当てはまるものなし",
    "another language": "ほかの言語",
    "likeliest characters": "最もありそうな文字",
    "as likely": "同程度",
};

let column = 0;

export function useLanguage(language) {
    column = language === "ja" ? 1 : 0;
}

export function say(key, ...values) {
    return strings[key][column].replace(/\{(\d)\}/g, (_, place) => values[place]);
}

export const ruleName = (rule) => (column ? (rules[rule] ?? rule) : rule);

/** A number as the language writes it. */
export const count = (number) => number.toLocaleString(column ? "ja" : "en");

/** Fills the texts of the page itself. */
export function translatePage() {
    for (const element of document.querySelectorAll("[data-text]")) {
        element.textContent = say(element.dataset.text);
    }
}
