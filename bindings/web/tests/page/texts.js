// Files that the tests convert.
import { execFileSync } from "node:child_process";
import { readFileSync } from "node:fs";

export const lossy = "日本語の文章です。𠮟るとき、森鷗外と草彅さんと🍣\n二行目：①②③ ñ é\n";

/** Text in an encoding, by iconv. */
export const encode = (text, encoding) => execFileSync("iconv", ["-f", "UTF-8", "-t", encoding], { input: text });

export const file = (name, content) => ({ name, mimeType: "text/plain", buffer: Buffer.from(content) });

export const files = [
    file("lossy.txt", lossy.repeat(3)),
    file("short.txt", [0xe4, 0xd8, 0xe5, 0xa5, 10]),
    file("damaged.txt", Buffer.concat([readFileSync("examples/data/letter.sjis.txt"), Buffer.from([0x81, 0x20, 0x41, 0xfd, 0x42])])),
    file("binary.dat", Array.from({ length: 300 }, (_, i) => (i * 7) % 256)),
    file("empty.txt", ""),
];
