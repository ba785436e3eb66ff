package kestro.jkc;

import java.util.Set;

/**
 * What a text is in.
 *
 * @param judged a number as {@link Jkc} has it: a code type, a set of several that are as likely, or -1 for none
 * @param lineEnds the line ends in the text; empty when it is not of one code type
 * @param rule the rule that decided, such as "well-formed UTF-8"
 * @param confidence how sure that is, from 0 to 100
 * @param binary whether it is no text at all
 */
public record Detection(int judged, Set<LineType> lineEnds, String rule, int confidence, boolean binary) {
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
     * @return the one that was found
     * @throws JkcException when the text could be of several code types, or is of none
     */
    public CodeType type() {
        if (!CodeType.isOne(judged)) {
            throw new JkcException(judged);
        }
        return candidates().iterator().next();
    }
}
