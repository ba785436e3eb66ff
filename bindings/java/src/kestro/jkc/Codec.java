package kestro.jkc;

/** Converts between a code type and UTF-16 as the codecs of java.nio do: it stops at each loss, and keeps nothing back. */
final class Codec extends NativeObject {
    /** How a run ended. */
    static final int UNDERFLOW = 0;

    static final int OVERFLOW = 1;
    static final int ILL_FORMED = 2;
    static final int UNMAPPABLE = 3;

    /** Bytes. No collection of garbage waits longer than a run over these takes. */
    private static final int LONGEST_RUN = 1 << 20;

    static {
        Jkc.load();
    }

    Codec(CodeType type, boolean encodes) {
        super(create(type.number(), encodes), Codec::release);
    }

    /** For another text. */
    synchronized void reset() {
        reset(handle());
    }

    /**
     * Converts as far as input and room go, or as a run may take. Memory is an array of numbers or a direct buffer; places
     * and lengths are in bytes.
     *
     * @return for {@link #how}, {@link #taken} and {@link #written}
     */
    synchronized long run(Object in, long inFrom, long inLength, Object out, long outFrom, long outLength, int flags) {
        long result = run(handle(), in, inFrom, (int) Math.min(inLength, LONGEST_RUN), out, outFrom,
                (int) Math.min(outLength, 4 * LONGEST_RUN), flags);
        if (result == -1) {
            throw new OutOfMemoryError("no memory to reach an array");
        }
        return result;
    }

    /** The bytes of the loss at which the last run stopped. */
    synchronized int lossLength() {
        return lossLength(handle());
    }

    private static native long create(int type, boolean encodes);

    private static native void release(long handle);

    private static native void reset(long handle);

    private static native long run(long handle, Object in, long inFrom, int inLength, Object out, long outFrom,
            int outLength, int flags);

    private static native int lossLength(long handle);
}
