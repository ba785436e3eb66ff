package kestro.jkc;

import java.util.EnumSet;

/** Detects what a text is in that comes in pieces: {@code jkc_detector_*}. */
final class FedDetector extends NativeObject {
    /** Bytes. No collection of garbage waits longer than this takes. */
    private static final int LONGEST_RUN = 1 << 20;

    private static final int UNDECIDED = -1;
    private static final int BINARY = -3;
    private static final EnumSet<CodeType> EUC = EnumSet.range(CodeType.EUC, CodeType.EUC_MS);

    /**
     * What was found.
     *
     * @param detection the decision
     * @param isBeyondBmp whether it has characters beyond the BMP
     */
    record Found(Detection detection, boolean isBeyondBmp) {}

    static {
        Jkc.load();
    }

    private final CodeType expected;

    /** {@code expected} wins ties. */
    FedDetector(CodeType expected) {
        super(create(expected.number()), FedDetector::release);
        this.expected = expected;
    }

    synchronized void feed(byte[] data, int from, int length) {
        for (int done = 0; done < length;) {
            int part = Math.min(length - done, LONGEST_RUN);
            if (!feed(handle(), data, from + done, part)) {
                throw new OutOfMemoryError("no memory to reach an array");
            }
            done += part;
        }
    }

    /** Ends the text. */
    synchronized Found finish() {
        int[] told = finish(handle());
        int decision = told[0];
        int judged = decision == UNDECIDED ? expectedOf(told[1]) : Math.max(decision, Status.EOF);
        int lineEnds = 0;
        if (CodeType.isOne(judged)) {
            CodeType type = CodeType.judged(judged).iterator().next();
            lineEnds = told[switch (type) {
                case UTF16BE, UTF16BE_BOM -> 6;
                case UTF16LE, UTF16LE_BOM -> 7;
                default -> 5;
            }];
        }
        return new Found(new Detection(judged, LineType.found(lineEnds), ruleName(told[2]), told[3],
                                 decision == BINARY), told[4] != 0);
    }

    /** What is expected, if it is open, or all that is. */
    private int expectedOf(int open) {
        CodeType likely = switch (expected) {
            case ASCII -> CodeType.SJIS;
            case UTF8_BOM -> CodeType.UTF8;
            case UTF16BE_BOM -> CodeType.UTF16BE;
            case UTF16LE_BOM -> CodeType.UTF16LE;
            default -> expected;
        };
        EnumSet<CodeType> fits = EnumSet.copyOf(CodeType.judged(open));
        if (EUC.contains(likely) ? fits.removeAll(EUC) : fits.contains(likely)) {
            return likely.number();
        }
        return open;
    }

    private static native long create(int preferred);

    private static native void release(long handle);

    private static native boolean feed(long handle, byte[] data, int from, int length);

    private static native int[] finish(long handle);

    private static native String ruleName(int rule);
}
