package kestro.jkc;

/**
 * What a conversion met. Positions are offsets in bytes after any BOM. Characters are code points where they are known,
 * codes of the source where these stand for none; 0 stands for ill-formed bytes, and -1 for none.
 *
 * @param source the code type of the source
 * @param lostCount how many losses there were; {@link Transcoder#losses()} tells of each
 * @param firstLostIndex where the first of them stands
 * @param lastLostIndex where the last of them stands
 * @param firstLost the first of them
 * @param lastLost the last of them
 */
public record Conversion(CodeType source, long lostCount, long firstLostIndex, long lastLostIndex, long firstLost,
        long lastLost) {
    static Conversion of(CodeType source, Losses losses) {
        Loss first = losses.first();
        Loss last = losses.last();
        return first == null ? new Conversion(source, 0, -1, -1, -1, -1)
                             : new Conversion(source, losses.count(), first.offset(), last.offset(), first.character(),
                                     last.character());
    }
}
