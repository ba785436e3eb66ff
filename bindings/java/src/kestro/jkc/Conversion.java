package kestro.jkc;

/**
 * What a conversion met. Positions are offsets in bytes after any BOM, codes those of the source encoding, or code
 * points from Unicode; a code of 0 stands for ill-formed bytes, and -1 for none.
 *
 * @param source the code type that the source was judged to be
 * @param lostCount how many characters were unmappable
 * @param firstLostIndex where the first of them stands
 * @param lastLostIndex where the last of them stands
 * @param firstLost the first of them
 * @param lastLost the last of them
 */
public record Conversion(CodeType source, int lostCount, int firstLostIndex, int lastLostIndex, long firstLost,
        long lastLost) {}
