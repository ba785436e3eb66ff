package kestro.jkc;

import java.io.IOException;
import java.io.Reader;
import java.util.List;
import java.util.Objects;

/**
 * A reader of text whose bytes are converted as they are read: {@link Transcoder#reader}. Up to 64 bytes of the source that were
 * read already may be kept back until more come, or it ends.
 *
 * <p>What the source throws reaches the reader; so does an {@link IOException} with a {@link JkcException} as its cause
 * where the loss policy ends the conversion. It may be used by any number of threads, one at a time.
 */
public final class ConvertingReader extends Reader {
    private final FedStream stream;

    ConvertingReader(FedStream stream) {
        this.stream = stream;
    }

    @Override
    public int read(char[] data, int offset, int length) throws IOException {
        Objects.checkFromIndexSize(offset, length, data.length);
        try {
            return stream.read(data, offset, length);
        } catch (JkcException e) {
            throw new IOException(e.getMessage(), e);
        }
    }

    /** Frees the native memory and closes the source. */
    @Override
    public void close() throws IOException {
        stream.close();
    }

    /**
     * Tells what the conversion has met so far.
     *
     * @return what it met
     */
    public Conversion conversion() {
        return stream.conversion();
    }

    /**
     * Tells what the conversion has lost so far.
     *
     * @return the losses, as {@link Transcoder#losses}
     */
    public List<Loss> losses() {
        return stream.losses().kept();
    }
}
