package kestro.jkc;

import java.util.EnumSet;
import java.util.Set;

/** An encoding. */
public enum CodeType {
    /** No input at all. */
    EMPTY(0),
    /** 7-bit text without escape sequences. */
    ASCII(1),
    /** ISO-2022-JP with the CP50221 repertoire. */
    JIS(2),
    /** ISO-2022-JP with the JIS X 0213:2004 planes. */
    JIS2004(3),
    /** Shift_JIS as Microsoft code page 932. */
    SJIS(4),
    /** EUC-JP, JIS X 0208 by the standard mapping. */
    EUC(5),
    /** EUC-JP as Microsoft code page 20932, with JIS X 0212. */
    EUC_20932(6),
    /** EUC-JP as Microsoft code page 51932. */
    EUC_51932(7),
    /** The encoding eucJP-ms. */
    EUC_MS(8),
    /** UTF-16 big-endian, no BOM. */
    UTF16BE(11),
    /** UTF-16 big-endian after FE FF. */
    UTF16BE_BOM(12),
    /** UTF-16 little-endian, no BOM. */
    UTF16LE(13),
    /** UTF-16 little-endian after FF FE. */
    UTF16LE_BOM(14),
    /** UTF-8, no BOM. */
    UTF8(15),
    /** UTF-8 after EF BB BF. */
    UTF8_BOM(16);

    private final int number;

    CodeType(int number) {
        this.number = number;
    }

    /**
     * Tells the number that {@link Jkc} takes.
     *
     * @return the number
     */
    public int number() {
        return number;
    }

    /**
     * Reads what {@link Jkc} judged.
     *
     * @param judged a code type, a set of several, or a negative value
     * @return the code types in it, none for a negative value
     */
    public static Set<CodeType> judged(int judged) {
        Set<CodeType> types = EnumSet.noneOf(CodeType.class);
        for (CodeType type : values()) {
            if (isSet(judged) ? (judged & type.bit()) != 0 : judged == type.number) {
                types.add(type);
            }
        }
        return types;
    }

    /** The bit of this code type in a set. */
    private int bit() {
        return 1 << (number + 5);
    }

    /** Any set is greater than the number of any code type. */
    private static boolean isSet(int judged) {
        return judged >= ASCII.bit();
    }

    /** Tells whether it is a Unicode form. */
    boolean isUnicode() {
        return compareTo(UTF16BE) >= 0;
    }

    /** Tells whether what was judged is one code type, not a set or nothing. */
    static boolean isOne(int judged) {
        return judged >= 0 && !isSet(judged);
    }
}
