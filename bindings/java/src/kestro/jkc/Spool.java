package kestro.jkc;

import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.io.FilterInputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.io.SequenceInputStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.nio.file.StandardOpenOption;

/** Keeps a text that cannot be read twice: its front in memory, the rest in a temporary file. */
final class Spool extends OutputStream {
    private static final int MOST_IN_MEMORY = 16 << 20;

    /** What is in memory, without a copy. */
    private static final class Front extends ByteArrayOutputStream {
        InputStream content() {
            return new ByteArrayInputStream(buf, 0, count);
        }
    }

    private final Front front = new Front();
    private Path file;
    private OutputStream rest;

    @Override
    public void write(int b) throws IOException {
        write(new byte[] {(byte) b}, 0, 1);
    }

    @Override
    public void write(byte[] data, int from, int length) throws IOException {
        if (rest == null && front.size() + length <= MOST_IN_MEMORY) {
            front.write(data, from, length);
            return;
        }
        if (rest == null) {
            file = Files.createTempFile("jkc", null);
            rest = Files.newOutputStream(file);
        }
        rest.write(data, from, length);
    }

    /** All that was written. The file goes away when the stream is closed; nothing can be written any more. */
    InputStream content() throws IOException {
        if (rest == null) {
            return front.content();
        }
        rest.close();
        InputStream in = Files.newInputStream(file, StandardOpenOption.DELETE_ON_CLOSE);
        file = null;
        // The sequence closes the file at its end; a second time does no harm.
        return new FilterInputStream(new SequenceInputStream(front.content(), in)) {
            @Override
            public void close() throws IOException {
                in.close();
            }
        };
    }

    /** Removes the file, unless its content was asked for. */
    @Override
    public void close() throws IOException {
        if (file != null) {
            rest.close();
            Files.delete(file);
        }
    }
}
