package kestro.jkc;

import java.io.InputStream;

/**
 * The native methods of libjkc, as they are: one object for one native context, created with {@link #_createJkc()} and
 * freed with {@link #_releaseJkc()}. {@link Transcoder} is the pleasant way to use them.
 *
 * <p>Different objects may be used by any number of threads at once, and a callback may use other objects. One object is
 * used by one thread at a time, and nothing is locked here. A call that judges, converts or releases while its object is
 * at work, as a callback's may, gets an {@link IllegalStateException}.
 *
 * <p>Code types are the numbers of {@link CodeType}, line types those of {@link LineType}. Results are numbers too: 0
 * for success, a negative status, or what was judged (a code type, or a set of those that fit equally, which
 * {@link CodeType#judged} reads; -1 when none fits). A method throws {@link NullPointerException} when data, path or
 * stream is null, and {@link IllegalStateException} on an object that was not created or is released.
 */
public final class Jkc {
    /** The version of the library; known once an object was created. */
    public static float nversion;

    /** What the last judgement or conversion returned. */
    public int sts;

    private long _hjkcInfo;

    static {
        NativeLibrary.load(Jkc::probe);
    }

    /** Makes an object that {@link #_createJkc()} has yet to give its native context. */
    public Jkc() {}

    /** Learns what the source was judged to be, before anything is written. */
    @FunctionalInterface
    public interface Observer {
        /**
         * Called once in a conversion. An exception stops the conversion and reaches its caller.
         *
         * @param codeType what was judged
         * @param user the object given to the conversion
         * @return 0 to go on; any other value stops, and the conversion returns {@code codeType}
         */
        int observe(int codeType, Object user);
    }

    /** Takes converted output. */
    @FunctionalInterface
    public interface Writer {
        /**
         * Called for each piece of the output. An exception stops the conversion and reaches its caller.
         *
         * @param data holds the piece at its front; valid only during the call
         * @param length the length of the piece in bytes, at most 8192
         * @param user the object given to the conversion
         * @return 0 when the bytes are taken; -22 ends the conversion in good order, with the same bytes once more; any
         *     other value ends it at once and becomes its result
         */
        int write(byte[] data, int length, Object user);
    }

    /**
     * Makes the native context. Once for an object, before any other method.
     *
     * @return 0, or -4 when memory is short
     */
    public native int _createJkc();

    /** Frees the native context. */
    public native void _releaseJkc();

    /**
     * Judges bytes in memory.
     *
     * @param typeOut null, or its first element receives the result; where several or no code types fit, the set of
     *     those that were possible
     * @param lineOut null, or its first element receives the line ends found, for {@link LineType#found}
     * @param data the bytes
     * @param length how many of them, at most the whole array
     * @param preferred the code type that wins a tie; 0 for none
     * @return what was judged, or a negative status
     */
    public native int judgesBuffer(int[] typeOut, int[] lineOut, byte[] data, int length, int preferred);

    /**
     * Judges a stream. An exception thrown by the stream is lost; the result is then -7.
     *
     * @param typeOut as for {@link #judgesBuffer}
     * @param lineOut as for {@link #judgesBuffer}
     * @param stream read with {@link InputStream#read(byte[], int, int)} to its end
     * @param preferred as for {@link #judgesBuffer}
     * @return what was judged, or a negative status
     */
    public native int judgesStream(int[] typeOut, int[] lineOut, InputStream stream, int preferred);

    /**
     * Judges a file.
     *
     * @param typeOut as for {@link #judgesBuffer}
     * @param lineOut as for {@link #judgesBuffer}
     * @param path the file's name in the bytes of the system; cut to 4095 of them
     * @param preferred as for {@link #judgesBuffer}
     * @return what was judged, or a negative status, -5 when the file cannot be opened
     */
    public native int judgesFile(int[] typeOut, int[] lineOut, byte[] path, int preferred);

    /**
     * Converts bytes in memory.
     *
     * @param data the bytes
     * @param length how many of them, at most the whole array
     * @param from the code type that is expected: it wins ties, it does not overrule the evidence
     * @param to the code type wanted; one that does not exist writes nothing and gives 0
     * @param sourceHint true: take 7-bit and other text that could be Shift_JIS as {@code from}
     * @param observer null, or told what was judged
     * @param writer null, or given the output
     * @param user passed to both
     * @return 0, a negative status, or what was judged when nothing was converted
     */
    public native int convertBuffer(byte[] data, int length, int from, int to, boolean sourceHint, Observer observer,
            Writer writer, Object user);

    /**
     * Converts a stream. An exception thrown by the stream is lost; the result is then -7.
     *
     * @param stream read with {@link InputStream#read(byte[], int, int)} to its end
     * @param from as for {@link #convertBuffer}
     * @param to as for {@link #convertBuffer}
     * @param sourceHint as for {@link #convertBuffer}
     * @param observer as for {@link #convertBuffer}
     * @param writer as for {@link #convertBuffer}
     * @param user as for {@link #convertBuffer}
     * @return as for {@link #convertBuffer}
     */
    public native int convertStream(InputStream stream, int from, int to, boolean sourceHint, Observer observer,
            Writer writer, Object user);

    /**
     * Converts a file.
     *
     * @param path the file's name in the bytes of the system; cut to 4095 of them
     * @param from as for {@link #convertBuffer}
     * @param to as for {@link #convertBuffer}
     * @param sourceHint as for {@link #convertBuffer}
     * @param observer as for {@link #convertBuffer}
     * @param writer as for {@link #convertBuffer}
     * @param user as for {@link #convertBuffer}
     * @return as for {@link #convertBuffer}; -5 when the file cannot be opened
     */
    public native int convertFile(byte[] path, int from, int to, boolean sourceHint, Observer observer, Writer writer,
            Object user);

    /**
     * Compares two code types of the same encoding.
     *
     * @param a a code type
     * @param b another one
     * @return 1 when b is a with a BOM, -1 when a is b with one, else 0
     */
    public native int cmpBom(int a, int b);

    /**
     * Tells the version of the library.
     *
     * @return 2.2
     */
    public native float getVersion();

    /**
     * Tells the line type that conversions write.
     *
     * @return a line type
     */
    public native int getLtype();

    /**
     * Sets the line type that conversions write.
     *
     * @param type 0, 1, 2 or 4; any other value changes nothing
     * @return the line type now in force
     */
    public native int setLtype(int type);

    /**
     * Tells whether conversions leave out unmappable characters.
     *
     * @return true when they do, false when they write a replacement
     */
    public native boolean isSuppress();

    /**
     * Sets whether conversions leave out unmappable characters.
     *
     * @param value true to leave them out, false to write a replacement
     */
    public native void setSuppress(boolean value);

    /**
     * Tells whether conversions from Unicode compose a base character and its combining mark.
     *
     * @return true when they do
     */
    public native boolean isUtfmacTo();

    /**
     * Sets whether conversions from Unicode compose a base character and its combining mark.
     *
     * @param value true to compose them
     */
    public native void setUtfmacTo(boolean value);

    /**
     * Tells whether the last judgement met a base character with a combining mark.
     *
     * @return true when it did
     */
    public native boolean utfmacExists();

    /**
     * Tells how many characters of the last conversion were unmappable.
     *
     * @return their number
     */
    public native int getNoCharCount();

    /**
     * Tells where the first such character stands.
     *
     * @return the offset in bytes after any BOM (its low 32 bits); -1: none
     */
    public native int getFirstNoCharIndex();

    /**
     * Tells where the last such character stands.
     *
     * @return the offset in bytes after any BOM (its low 32 bits); -1: none
     */
    public native int getLastNoCharIndex();

    /**
     * Tells the first such character.
     *
     * @return its code in the source, or its code point from Unicode; 0: ill-formed bytes; -1: none
     */
    public native long getFirstNoChar();

    /**
     * Tells the last such character.
     *
     * @return its code in the source, or its code point from Unicode; 0: ill-formed bytes; -1: none
     */
    public native long getLastNoChar();

    /**
     * Tells whether the EUC tables in use (of the last judgement or conversion) have a code.
     *
     * @param code a code of one, two or three bytes, the first one highest
     * @return true when it stands for a character
     */
    public native boolean isEucLong(long code);

    /**
     * Sees to it that the native library is there.
     *
     * @throws LinkageError when it is not
     */
    static void load() {
        // That this class is initialised is all it takes.
    }

    /** Fails when the loaded library lacks the methods above, as one built without them does. */
    private static void probe() {
        Jkc jkc = new Jkc();
        if (jkc._createJkc() == 0) {
            jkc._releaseJkc();
        }
    }
}
