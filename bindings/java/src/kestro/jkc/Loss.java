package kestro.jkc;

/**
 * Something of a text that did not come through a conversion as it is.
 *
 * @param kind why
 * @param offset where it stands in the text, in bytes after any BOM
 * @param length its bytes
 * @param code its bytes as a number, the first one highest; the first four of a longer one
 * @param codePoint the character that the target lacks; -1: no character
 * @param line its line, from 1 on; each CR, LF and CR LF ends one
 * @param column where it stands in the line, in characters from 1 on
 */
public record Loss(Kind kind, long offset, int length, long code, int codePoint, long line, long column) {
    /** Why something is lost. */
    public enum Kind {
        /** Bytes that are no character of the source. */
        ILL_FORMED,
        /** A character that the target lacks, or a code to which the source assigns none. */
        UNMAPPABLE,
        /** The text ends inside a character. */
        TRUNCATED
    }

    /** How many numbers the library tells of a loss, and how many with its place. */
    static final int NUMBERS = 5;

    static final int NUMBERS_WITH_PLACE = 7;

    private static final Kind[] KINDS = Kind.values();

    /** Reads what the library tells; null where it tells of none. */
    static Loss read(long[] told, int at, boolean hasPlace) {
        return told[at] == 0 ? null
                             : new Loss(KINDS[(int) told[at] - 1], told[at + 1], (int) told[at + 2], told[at + 3],
                                     (int) told[at + 4], hasPlace ? told[at + 5] : 0, hasPlace ? told[at + 6] : 0);
    }

    /** The same with the bytes of each code unit the other way round. */
    Loss ofText() {
        long swapped = (code & 0xFF00FF00L) >>> 8 | (code & 0x00FF00FFL) << 8;
        return new Loss(kind, offset, length, swapped, codePoint, line, column);
    }

    /** What {@link Conversion} tells of it. */
    long character() {
        return codePoint >= 0 ? codePoint : kind == Kind.UNMAPPABLE ? code : 0;
    }
}
