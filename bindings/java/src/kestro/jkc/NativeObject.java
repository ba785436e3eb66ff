package kestro.jkc;

import java.lang.ref.Cleaner;
import java.util.function.LongConsumer;

/**
 * Something that the library keeps for an object here. It is freed by {@link #close()}, or some time after the last use.
 * Methods lock the object, so that no use of it can harm the native side.
 */
abstract class NativeObject implements AutoCloseable {
    /** In the flags of a native call. */
    static final int INPUT_IS_DIRECT = 1;

    static final int OUTPUT_IS_DIRECT = 2;
    static final int IS_LAST = 4;

    /** What is lower is an address. */
    private static final int LOWEST_STATUS = -1000;

    private static final Cleaner CLEANER = Cleaner.create();

    private final long handle;
    private final Cleaner.Cleanable release;
    private boolean closed;

    /**
     * Takes what the library made: an address, or a status in place of one.
     *
     * @throws OutOfMemoryError when there was no memory
     * @throws JkcException when there was another reason
     */
    NativeObject(long handle, LongConsumer releaser) {
        if (handle == 0 || handle == Status.EALLOC) {
            throw new OutOfMemoryError("no memory for what the library needs");
        }
        if (handle < 0 && handle > LOWEST_STATUS) {
            throw new JkcException((int) handle);
        }
        this.handle = handle;
        release = CLEANER.register(this, () -> releaser.accept(handle));
    }

    /** What the library knows it by; only while the object is locked. */
    final long handle() {
        if (closed) {
            throw new IllegalStateException("this is closed");
        }
        return handle;
    }

    @Override
    public final synchronized void close() {
        closed = true;
        release.clean();
    }

    // What a call took and wrote, in bytes, and how it ended: as the native side packs them.

    static int how(long result) {
        return (int) (result >>> 62);
    }

    static int taken(long result) {
        return (int) (result >>> 31) & Integer.MAX_VALUE;
    }

    static int written(long result) {
        return (int) result & Integer.MAX_VALUE;
    }
}
