import { JkcError, ETYPE } from "./error.js";

// The library's code types, by the names that the web has for them.
const rows = [
    [1, "US-ASCII", "ASCII ISO646-US ANSI_X3.4-1968 CP20127"],
    [2, "ISO-2022-JP", "JIS ISO-2022-JP-MS CP50221 csISO2022JP x-windows-50221"],
    [3, "ISO-2022-JP-2004", "JIS2 JIS2004 ISO-2022-JP-3"],
    [4, "Shift_JIS", "CP932 Windows-31J Windows-932 sjis-win MS932 MS_Kanji x-sjis csShiftJIS csWindows31J"],
    [5, "EUC-JP", "ujis x-euc-jp csEUCPkdFmtJapanese"],
    [6, "CP20932", "EUC1 Windows-20932"],
    [7, "CP51932", "EUC2 Windows-51932"],
    [8, "eucJP-ms", "EUC3 EUC-MS eucJP-win eucJP-open"],
    [11, "UTF-16BE", "UCS-2BE CP1201"],
    [12, "UTF-16BE-BOM", "UnicodeBig"],
    [13, "UTF-16LE", "UCS-2LE CP1200"],
    [14, "UTF-16LE-BOM", "UTF-16 Unicode"],
    [15, "UTF-8", "UTF-8N CP65001"],
    [16, "UTF-8-BOM", "UTF-8-SIG"],
];

const plain = (name) => name.toLowerCase().replace(/[-_ ]/g, "");

/** The encodings that a library has, and their names. */
export class Encodings {
    #byType = new Map();
    #byName = new Map();

    /** @param {(type: number) => string} label the library's own name of a code type */
    constructor(label) {
        this.all = rows.map(([type, name, aliases]) =>
            Object.freeze({ name, type, label: label(type), aliases: Object.freeze(aliases.split(" ")) }),
        );
        Object.freeze(this.all);
        for (const encoding of this.all) {
            this.#byType.set(encoding.type, encoding);
            for (const name of [encoding.name, encoding.label, ...encoding.aliases]) {
                this.#byName.set(plain(name), encoding);
            }
        }
    }

    /** The code type of a name; case, '-', '_' and spaces do not count. */
    type(name) {
        const encoding = this.#byName.get(plain(String(name)));
        if (encoding === undefined) {
            throw new JkcError(`no encoding ${name}`, ETYPE);
        }
        return encoding.type;
    }

    /** The name of a code type; null where there is none. */
    name(type) {
        return this.#byType.get(type)?.name ?? null;
    }
}
