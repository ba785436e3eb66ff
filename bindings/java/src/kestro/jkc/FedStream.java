package kestro.jkc;

import java.io.Closeable;
import java.io.IOException;
import java.io.InputStream;

/** A text that is converted as it is read. */
final class FedStream implements Closeable {
    private static final int BUFFER_SIZE = 1 << 16;

    private final InputStream in;
    private final Closeable closed;
    private final CodeType source;
    private final FedConverter fed;
    private final byte[] buffer = new byte[BUFFER_SIZE];
    private int position;
    private int limit;
    private boolean isAtEnd;
    private boolean isOver;
    private boolean isClosed;
    private Losses losses = Losses.NONE;

    /**
     * Takes the source, what is closed with the stream, or null, the code type of the source, and what converts it, or null
     * for a text without a byte.
     */
    FedStream(InputStream in, Closeable closed, CodeType source, FedConverter fed) {
        this.in = in;
        this.closed = closed;
        this.source = source;
        this.fed = fed;
        isOver = fed == null;
    }

    CodeType source() {
        return source;
    }

    /** What was met so far. */
    synchronized Conversion conversion() {
        return Conversion.of(source, losses());
    }

    synchronized Losses losses() {
        return fed == null || isClosed ? losses : fed.losses();
    }

    /** Reads bytes as a stream does: one at least, or -1 at the end. */
    int read(byte[] out, int from, int length) throws IOException {
        return read(length, room -> fed.run(buffer, position, limit - position, out, from, room, isAtEnd));
    }

    /** Reads characters likewise. */
    int read(char[] out, int from, int length) throws IOException {
        return read(length, room -> fed.run(buffer, position, limit - position, out, from, room, isAtEnd));
    }

    private interface Run {
        int into(int room);
    }

    private synchronized int read(int room, Run run) throws IOException {
        if (isClosed) {
            throw new IOException("this stream is closed");
        }
        if (room == 0) {
            return 0;
        }
        while (!isOver) {
            int how = run.into(room);
            int written = fed.written();
            position += fed.taken();
            if (how == FedConverter.FAILED && written == 0) {
                throw fed.failure();
            }
            isOver = how == FedConverter.END;
            if (written > 0) {
                return written;
            }
            if (how == FedConverter.INPUT && position == limit && !isAtEnd) {
                fill();
            }
        }
        return -1;
    }

    private void fill() throws IOException {
        int count = in.read(buffer, 0, BUFFER_SIZE);
        isAtEnd = count < 0;
        position = 0;
        limit = Math.max(count, 0);
    }

    @Override
    public synchronized void close() throws IOException {
        if (isClosed) {
            return;
        }
        losses = losses();
        isClosed = true;
        if (fed != null) {
            fed.close();
        }
        if (closed != null) {
            closed.close();
        }
    }
}
