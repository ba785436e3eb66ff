package kestro.jkc;

import java.io.ByteArrayInputStream;
import java.io.File;
import java.nio.file.Files;
import java.nio.file.Path;

/** The ways in which bytes reach the native methods, so that a test runs through all of them. */
enum Source {
    BUFFER,
    STREAM,
    SLOW_STREAM,
    FILE;

    /** Gives one byte at a time, and now and then none; more only when there are very many. */
    private static final class SlowStream extends ByteArrayInputStream {
        private int calls;

        SlowStream(byte[] data) {
            super(data);
        }

        @Override
        public synchronized int read(byte[] data, int offset, int length) {
            return ++calls % 3 == 0 ? 0 : super.read(data, offset, Math.min(length, calls < 100 ? 1 : 977));
        }
    }

    static byte[] file(byte[] data) throws Exception {
        Path file = File.createTempFile("jkc", ".txt").toPath();
        file.toFile().deleteOnExit();
        return Files.write(file, data).toString().getBytes();
    }

    private ByteArrayInputStream stream(byte[] data) {
        return this == STREAM ? new ByteArrayInputStream(data) : new SlowStream(data);
    }

    int judge(Jkc jkc, int[] type, int[] line, byte[] data, int preferred) throws Exception {
        switch (this) {
            case BUFFER:
                return jkc.judgesBuffer(type, line, data, data.length, preferred);
            case FILE:
                return jkc.judgesFile(type, line, file(data), preferred);
            default:
                return jkc.judgesStream(type, line, stream(data), preferred);
        }
    }

    int convert(Jkc jkc, byte[] data, int from, int to, boolean hint, Jkc.Observer observer, Jkc.Writer writer,
            Object user) throws Exception {
        switch (this) {
            case BUFFER:
                return jkc.convertBuffer(data, data.length, from, to, hint, observer, writer, user);
            case FILE:
                return jkc.convertFile(file(data), from, to, hint, observer, writer, user);
            default:
                return jkc.convertStream(stream(data), from, to, hint, observer, writer, user);
        }
    }
}
