package kestro.jkc;

import java.util.Set;

/**
 * What a text was judged to be.
 *
 * @param judged a number as {@link Jkc} has it: a code type, a set of several that fit equally, or -1 when none fits
 * @param lineEnds the line ends in the text; empty when it was not judged to be of one code type
 */
public record Detection(int judged, Set<LineType> lineEnds) {
    /**
     * Tells the code types that fit best.
     *
     * @return one, several, or none
     */
    public Set<CodeType> candidates() {
        return CodeType.judged(judged);
    }

    /**
     * Tells the code type.
     *
     * @return the one that was judged
     * @throws JkcException when the text could be of several code types, or of none
     */
    public CodeType type() {
        if (!CodeType.isOne(judged)) {
            throw new JkcException(judged);
        }
        return candidates().iterator().next();
    }
}
