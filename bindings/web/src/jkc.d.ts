/** An encoding that the library has. */
export interface Encoding {
    /** As results name it: `"Shift_JIS"`. */
    readonly name: string;
    /** The number that the C library has for it. */
    readonly type: number;
    /** The name that the C library and the program `jkc` have for it: `"SJIS"`. */
    readonly label: string;
    /** Other names by which it is found. Case, hyphens, underscores and spaces do not count. */
    readonly aliases: readonly string[];
}

/** What speaks for and against one encoding. All numbers but the offset are in bytes. */
export interface Evidence {
    encoding: string;
    /** In characters that it has, beyond ASCII. */
    valid: number;
    /** In sequences that it lacks or that are ill-formed. With 11 bytes it is out, and not counted on. */
    illFormed: number;
    /** In hiragana and katakana. */
    kana: number;
    /** In half-width katakana that stand alone. */
    penalty: number;
    /** The offset where the first of `illFormed` stands; -1: nowhere. */
    firstError: number;
}

export type LineEnd = "lf" | "crlf" | "cr";

/** What a text was found to be. */
export interface Detection {
    /** The name of its encoding; null where `kind` is not `"encoding"`. An empty text is US-ASCII, too. */
    encoding: string | null;
    /**
     * `"undecided"`: several are as likely, see `open`. `"unknown"`: text that is in none, a mix of several or damaged.
     * `"binary"`: no text.
     */
    kind: "encoding" | "undecided" | "unknown" | "binary";
    /** The names of those that are as likely. */
    open: string[];
    /** The rule that decided, such as `"well-formed UTF-8"`. */
    rule: string;
    /** How sure the decision is, 0 to 100. */
    confidence: number;
    /** The kinds of line ends that the text has. */
    lineEnds: LineEnd[];
    /** Whether it begins with a byte-order mark. */
    bom: boolean;
    /** Of each candidate. */
    evidence: Evidence[];
}

export interface ConvertOptions {
    /** What the text is in. Without it convert() detects it; text that comes in pieces needs it. */
    from?: string;
    /** What is wanted. The encodings with `-BOM` in their names begin with a byte-order mark. */
    to: string;
    /** The line ends of the output. By default each is kept. */
    eol?: LineEnd | "keep";
    /**
     * What is written for a loss: U+FFFD, or `?` where there is none (`"replace"`, the default); nothing (`"omit"`);
     * `&#x20BB7;` for a character that the target lacks (`"escape"`); or the conversion ends in front of it with a
     * JkcError of status -25 (`"stop"`).
     */
    onLoss?: "replace" | "omit" | "escape" | "stop";
    /** Compose letters with their combining marks, as from file names of macOS. */
    compose?: boolean;
    /** Replace by the geta mark instead of `?`. */
    geta?: boolean;
    /** How many losses are told; all are counted. By default 1000. */
    maxLosses?: number;
}

/** Something of a text that does not come through as it is. */
export interface Loss {
    /**
     * `"ill-formed"`: bytes that are no character; `"unmappable"`: a character that the target lacks, or a code without
     * one; `"truncated"`: the text ends inside a character.
     */
    kind: "ill-formed" | "unmappable" | "truncated";
    /** Where it stands in the data, in bytes. */
    offset: number;
    /** How many bytes it is. */
    length: number;
    /** These as a number, the first byte highest; the first four of a longer one. */
    code: number;
    /** The character that is unmappable; null where there is none. */
    character: string | null;
    /** From 1 on. */
    line: number;
    /** In characters, from 1 on. */
    column: number;
}

export interface Conversion {
    data: Uint8Array;
    /** The name of what the text was in. */
    from: string;
    /** The first `maxLosses` of them, in the order of the text. */
    losses: Loss[];
    /** How many there are. */
    lossCount: number;
}

/** Detects a text in pieces, in constant memory. */
export interface Detector {
    /** A piece, cut anywhere. */
    feed(chunk: Uint8Array): void;
    /** Ends the text. */
    finish(): Detection;
    /** Frees what it has in the memory of WebAssembly, which happens by itself only when it is collected. */
    free(): void;
}

/** Converts a text in pieces, in constant memory. */
export interface Converter {
    /** A piece, cut anywhere. Answers the output that is known by now. */
    feed(chunk: Uint8Array): Uint8Array;
    /** Ends the text and answers what is left of the output. */
    finish(): Uint8Array;
    readonly losses: Loss[];
    readonly lossCount: number;
    /** Frees what it has in the memory of WebAssembly, which happens by itself only when it is collected. */
    free(): void;
}

/** A proposal of how a text that was decoded wrongly was meant. */
export interface Mending {
    text: string;
    /** How sure it is, 0 to 100. */
    confidence: number;
    /** How many characters did not come back: each is U+FFFD in `text`. */
    lost: number;
    /** The misreadings in the order in which they are undone: text in `was` had been read as `readAs`. */
    steps: { was: string; readAs: string }[];
}

/** The library. All of it throws JkcError, and TypeError for arguments of other types. */
export interface Jkc {
    readonly version: string;
    readonly encodings: readonly Encoding[];
    /** How many bytes of memory WebAssembly has. */
    readonly memorySize: number;
    detect(data: Uint8Array): Detection;
    createDetector(): Detector;
    /** Throws a JkcError of status -20, with the detection, where the encoding is not told and not found. */
    convert(data: Uint8Array, options: ConvertOptions): Conversion;
    createConverter(options: ConvertOptions & { from: string }): Converter;
    /** As a string, with U+FFFD for what is lost. */
    decode(data: Uint8Array, from?: string): string;
    encode(text: string, to: string, options?: Omit<ConvertOptions, "from" | "to">): Uint8Array;
    /** For `pipeThrough()`. Losses are told as they come. */
    convertStream(
        options: ConvertOptions & { from: string },
    ): TransformStream<Uint8Array, Uint8Array> & { readonly losses: Loss[]; readonly lossCount: number };
    /** Null where the text is sound, or no way back is known. */
    unmojibake(text: string): Mending | null;
}

export class JkcError extends Error {
    constructor(message: string, status: number);
    /** A status of the C library: -4 memory is short, -20 no such encoding, -25 a loss where `onLoss` is `"stop"`. */
    readonly status: number;
    /** The losses up to it, where it ended a conversion. */
    readonly losses?: Loss[];
    /** What was found, where that is no single encoding. */
    readonly detection?: Detection;
}

/**
 * Makes the library ready, once: further calls answer the same.
 * @param source where jkc.wasm is, or what is in it; by default it is beside this module
 */
export function load(source?: URL | string | Response | BufferSource | WebAssembly.Module): Promise<Jkc>;
