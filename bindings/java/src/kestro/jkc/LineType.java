package kestro.jkc;

import java.util.EnumSet;
import java.util.Set;

/** A line end: what a conversion writes, or what was found. */
public enum LineType {
    /** Each line end is written as it stands. */
    KEEP(0),
    /** LF. */
    LF(1),
    /** CR. */
    CR(2),
    /** CR LF. */
    CRLF(4);

    private final int number;

    LineType(int number) {
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
     * Reads the line ends that {@link Jkc} found.
     *
     * @param bits their numbers ORed, or the negative status of a text that fits ASCII and UTF-16 alike
     * @return the line ends
     */
    public static Set<LineType> found(int bits) {
        Set<LineType> types = EnumSet.noneOf(LineType.class);
        for (LineType type : values()) {
            if (bits > 0 && (bits & type.number) != 0) {
                types.add(type);
            }
        }
        return types;
    }
}
