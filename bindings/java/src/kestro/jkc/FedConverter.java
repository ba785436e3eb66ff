package kestro.jkc;

import java.nio.ByteOrder;

/** Converts a text that comes in pieces, from a code type that is told: {@code jkc_converter_*}. */
final class FedConverter extends NativeObject {
    /** UTF-16 as it stands in an array of characters. */
    static final CodeType CHARS =
            ByteOrder.nativeOrder() == ByteOrder.LITTLE_ENDIAN ? CodeType.UTF16LE : CodeType.UTF16BE;

    /** How a run ended. */
    static final int END = 0;

    static final int INPUT = 1;
    static final int OUTPUT = 2;
    static final int FAILED = 3;

    /** Bytes. No collection of garbage waits longer than a run over these takes. */
    private static final int LONGEST_RUN = 1 << 20;

    /**
     * What is converted to what, and how.
     *
     * @param from the source
     * @param to the target
     * @param lineType the line ends that are written
     * @param onLoss what is written for a loss
     * @param compose whether pairs are composed
     * @param suppress whether the classic policy leaves out
     * @param jis2004 whether JIS is written with the tables of JIS X 0213:2004
     * @param keep how many losses are kept
     */
    record Route(CodeType from, CodeType to, LineType lineType, LossPolicy onLoss, boolean compose, boolean suppress,
            boolean jis2004, int keep) {}

    static {
        Jkc.load();
    }

    private int taken;
    private int written;

    FedConverter(Route route) {
        super(create(route.from.number(), route.to.number(), route.lineType.number(), route.onLoss.number(),
                      route.onLoss == LossPolicy.GETA, route.compose, route.suppress, route.jis2004, route.keep),
                FedConverter::release);
    }

    /** For another text. */
    synchronized void reset() {
        reset(handle());
    }

    /** Converts bytes to bytes, as {@link #run(Object, int, int, int, Object, int, int, int, boolean)}. */
    int run(byte[] in, int inFrom, int inLength, byte[] out, int outFrom, int outLength, boolean last) {
        return run(in, inFrom, inLength, 0, out, outFrom, outLength, 0, last);
    }

    /** Converts bytes to characters, likewise; the target is {@link #CHARS}. */
    int run(byte[] in, int inFrom, int inLength, char[] out, int outFrom, int outLength, boolean last) {
        return run(in, inFrom, inLength, 0, out, outFrom, outLength, 1, last);
    }

    /** Converts characters to bytes, likewise; the source is {@link #CHARS}. */
    int run(char[] in, int inFrom, int inLength, byte[] out, int outFrom, int outLength, boolean last) {
        return run(in, inFrom, inLength, 1, out, outFrom, outLength, 0, last);
    }

    /**
     * Converts as far as input and room go, or as a run may take. {@link #taken()} and {@link #written()} tell how far that
     * was. An element has 1 << {@code shift} bytes.
     */
    private synchronized int run(Object in, int inFrom, int inLength, int inShift, Object out, int outFrom,
            int outLength, int outShift, boolean last) {
        int length = Math.min(inLength, LONGEST_RUN);
        int room = Math.min(outLength, 4 * LONGEST_RUN);
        long result = run(handle(), in, (long) inFrom << inShift, length << inShift, out, (long) outFrom << outShift,
                room << outShift, last && length == inLength ? IS_LAST : 0);
        taken = taken(result) >> inShift;
        written = written(result) >> outShift;
        int how = how(result);
        return how == OUTPUT && written == room && room < outLength ? INPUT : how;
    }

    /** How many elements the last run took. */
    synchronized int taken() {
        return taken;
    }

    /** How many elements the last run wrote. */
    synchronized int written() {
        return written;
    }

    /** Why a run failed. */
    synchronized RuntimeException failure() {
        int status = status(handle());
        if (status >= END) {
            throw new OutOfMemoryError("no memory to reach an array");
        }
        return new JkcException(status, losses().first());
    }

    /** What was lost so far. */
    synchronized Losses losses() {
        return Losses.read(losses(handle()));
    }

    private static native long create(int from, int to, int lineType, int onLoss, boolean geta, boolean compose,
            boolean suppress, boolean jis2004, int keep);

    private static native void release(long handle);

    private static native void reset(long handle);

    private static native long run(
            long handle, Object in, long inFrom, int inLength, Object out, long outFrom, int outLength, int flags);

    private static native int status(long handle);

    private static native long[] losses(long handle);
}
