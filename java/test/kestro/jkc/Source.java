package kestro.jkc;

import java.io.ByteArrayInputStream;
import java.io.File;
import java.io.IOException;
import java.io.InputStream;
import java.io.UncheckedIOException;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;

/** The ways in which bytes reach the native methods, so that a test runs through all of them. */
enum Source {
    BUFFER,
    STREAM,
    SLOW_STREAM,
    FILE;

    /** Gives one byte at a time, and now and then none; more only when there are very many. */
    static final class SlowStream extends ByteArrayInputStream {
        private int calls;

        SlowStream(byte[] data) {
            super(data);
        }

        @Override
        public synchronized int read(byte[] data, int offset, int length) {
            return ++calls % 3 == 0 ? 0 : super.read(data, offset, Math.min(length, calls < 100 ? 1 : 977));
        }
    }

    static byte[] pathBytes(Path file) {
        return file.toString().getBytes(StandardCharsets.UTF_8);
    }

    private InputStream stream(byte[] data) {
        return this == STREAM ? new ByteArrayInputStream(data) : new SlowStream(data);
    }

    int judge(Jkc jkc, int[] type, int[] line, byte[] data, int preferred) {
        switch (this) {
            case BUFFER:
                return jkc.judgesBuffer(type, line, data, data.length, preferred);
            case FILE:
                return withFile(data, path -> jkc.judgesFile(type, line, path, preferred));
            default:
                return jkc.judgesStream(type, line, stream(data), preferred);
        }
    }

    int convert(Jkc jkc, byte[] data, CodeType from, CodeType to, Jkc.Observer observer, Jkc.Writer writer) {
        return convert(jkc, data, from.number(), to.number(), false, observer, writer, null);
    }

    int convert(Jkc jkc, byte[] data, int from, int to, boolean hint, Jkc.Observer observer, Jkc.Writer writer,
            Object user) {
        switch (this) {
            case BUFFER:
                return jkc.convertBuffer(data, data.length, from, to, hint, observer, writer, user);
            case FILE:
                return withFile(data, path -> jkc.convertFile(path, from, to, hint, observer, writer, user));
            default:
                return jkc.convertStream(stream(data), from, to, hint, observer, writer, user);
        }
    }

    private interface FileUse {
        int run(byte[] path);
    }

    private static int withFile(byte[] data, FileUse use) {
        try {
            Path file = File.createTempFile("jkc", ".txt").toPath();
            try {
                Files.write(file, data);
                return use.run(pathBytes(file));
            } finally {
                Files.delete(file);
            }
        } catch (IOException e) {
            throw new UncheckedIOException(e);
        }
    }
}
