package kestro.jkc;

/** What a conversion does with what cannot be converted. */
public enum LossPolicy {
    /** What {@link Jkc#convertBuffer} writes, which depends on the code types; {@link Transcoder#suppress} leaves it out. */
    CLASSIC(0),
    /** U+FFFD to Unicode, once for each ill-formed sequence as Unicode recommends it; else a question mark. */
    REPLACE(1),
    /** As {@link #REPLACE}, with the geta mark in place of the question mark. */
    GETA(1),
    /** Nothing is written. */
    OMIT(2),
    /** The conversion ends in front of the first loss with a {@link JkcException}. */
    STOP(3),
    /** {@code &#x20BB7;} for a character that the target lacks, else as {@link #REPLACE}. */
    ESCAPE(4);

    private final int number;

    LossPolicy(int number) {
        this.number = number;
    }

    /** The number that the library takes. */
    int number() {
        return number;
    }
}
