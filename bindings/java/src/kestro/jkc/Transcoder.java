package kestro.jkc;

import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.lang.ref.Cleaner;
import java.lang.ref.Reference;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.Objects;
import java.util.concurrent.locks.ReentrantLock;

/**
 * Tells which Japanese encoding a text is in, and converts it.
 *
 * <pre>{@code
 * try (Transcoder transcoder = new Transcoder().expect(CodeType.SJIS)) {
 *     String text = transcoder.decode(bytes);
 * }
 * }</pre>
 *
 * <p>The encoding is judged from the bytes, and a tie is not guessed: {@link #expect} decides it. The one exception is
 * plain 7-bit text that would make sense as UTF-16 too, which is taken as ASCII.
 *
 * <p>Different transcoders may be used by any number of threads at once. One is used by one thread at a time: others wait
 * for it. A stream that a transcoder reads or writes may use other transcoders, but not that one. Streams in two threads
 * that use each other's transcoder wait for each other for ever.
 *
 * <p>Methods throw {@link NullPointerException} for a null argument and {@link IllegalStateException} once the
 * transcoder is closed. One that is never closed is freed some time after the last use.
 */
public final class Transcoder implements AutoCloseable {
    private static final Cleaner CLEANER = Cleaner.create();

    private final ReentrantLock inUse = new ReentrantLock();
    private final Jkc jkc = new Jkc();
    private final Cleaner.Cleanable release;
    private boolean closed;
    private CodeType expected = CodeType.EMPTY;
    private Conversion last;

    /** Makes a transcoder with every option off. */
    public Transcoder() {
        if (jkc._createJkc() != Status.SUCCESS) {
            throw new OutOfMemoryError("no memory for a transcoder");
        }
        release = CLEANER.register(this, holding(inUse, jkc::_releaseJkc));
    }

    /** The cleaner's thread takes its turn too, and so sees what the last user's did. It must not know the transcoder. */
    private static Runnable holding(ReentrantLock lock, Runnable action) {
        return () -> {
            lock.lock();
            try {
                action.run();
            } finally {
                lock.unlock();
            }
        };
    }

    /** Frees the native memory. A second call does nothing. */
    @Override
    public void close() {
        takeTurn();
        try {
            closed = true;
            release.clean();
        } finally {
            inUse.unlock();
        }
    }

    /**
     * Sets the code type that is expected. It wins ties; it does not overrule the evidence.
     *
     * @param type the code type, {@link CodeType#EMPTY} for none
     * @return this transcoder
     */
    public Transcoder expect(CodeType type) {
        return set(() -> expected = Objects.requireNonNull(type));
    }

    /**
     * Sets the line ends that conversions write.
     *
     * @param type the line type
     * @return this transcoder
     */
    public Transcoder lineType(LineType type) {
        return set(() -> jkc.setLtype(type.number()));
    }

    /**
     * Sets what conversions do with unmappable characters.
     *
     * @param leaveOut true to leave them out, false to write a replacement
     * @return this transcoder
     */
    public Transcoder suppress(boolean leaveOut) {
        return set(() -> jkc.setSuppress(leaveOut));
    }

    /**
     * Sets whether conversions from Unicode compose a base character and its combining mark.
     *
     * @param pairs true to compose them
     * @return this transcoder
     */
    public Transcoder compose(boolean pairs) {
        return set(() -> jkc.setUtfmacTo(pairs));
    }

    /**
     * Judges bytes in memory.
     *
     * @param data the bytes
     * @return what they were judged to be
     * @throws JkcException when judging failed
     */
    public Detection detect(byte[] data) {
        return use(() -> judge(data));
    }

    /**
     * Judges a stream, which is read to its end and stays open.
     *
     * @param in the stream
     * @return what it was judged to be
     * @throws IOException thrown by the stream
     * @throws JkcException when judging failed
     */
    public Detection detect(InputStream in) throws IOException {
        Source source = new Source(in);
        return use(() -> {
            int[] lineEnds = new int[1];
            int judged = jkc.judgesStream(null, lineEnds, source, expected.number());
            source.rethrow();
            return CodeType.isPlain(judged) ? judge(source.plainText()) : detection(judged, lineEnds[0]);
        });
    }

    /**
     * Judges a file.
     *
     * @param file the file
     * @return what it was judged to be
     * @throws IOException when the file cannot be opened or read
     * @throws JkcException when judging failed
     */
    public Detection detect(Path file) throws IOException {
        try (InputStream in = Files.newInputStream(file)) {
            return detect(in);
        }
    }

    /**
     * Makes a string of bytes in any encoding. {@link #lastConversion()} tells what was unmappable.
     *
     * @param data the bytes
     * @return the text
     * @throws JkcException when no single code type fits, or the text ends inside a character
     */
    public String decode(byte[] data) {
        return new String(convert(data, CodeType.UTF16BE), StandardCharsets.UTF_16BE);
    }

    /**
     * Writes a string in an encoding. {@link #lastConversion()} tells what was unmappable, with positions that are
     * twice the index in the string.
     *
     * @param text the text
     * @param to the encoding wanted
     * @return the bytes
     */
    public byte[] encode(String text, CodeType to) {
        return convert(text.getBytes(StandardCharsets.UTF_16), to); // with a BOM, which settles the judgement
    }

    /**
     * Converts bytes in memory.
     *
     * @param data the bytes
     * @param to the encoding wanted; {@link CodeType#ASCII} is written as Shift_JIS
     * @return the converted bytes
     * @throws JkcException when no single code type fits, or the text ends inside a character
     */
    public byte[] convert(byte[] data, CodeType to) {
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        Jkc.Writer writer = (piece, length, user) -> {
            out.write(piece, 0, length);
            return Status.SUCCESS;
        };
        use(() -> convert(data, to, writer));
        return out.toByteArray();
    }

    /**
     * Converts a stream. The source is read to its end before anything is written. Both streams stay open.
     *
     * @param in the source
     * @param out receives the converted bytes
     * @param to the encoding wanted; {@link CodeType#ASCII} is written as Shift_JIS
     * @return what the conversion met
     * @throws IOException thrown by one of the streams
     * @throws JkcException when no single code type fits (nothing is written then), or the text ends inside a character
     */
    public Conversion convert(InputStream in, OutputStream out, CodeType to) throws IOException {
        Source source = new Source(in);
        Sink sink = new Sink(out);
        return use(() -> {
            Judged judged = new Judged();
            int result = jkc.convertStream(source, expected.number(), target(to), false, judged, sink, null);
            source.rethrow();
            sink.rethrow();
            return CodeType.isPlain(result) ? convert(source.plainText(), to, sink) : record(judged.type, result);
        });
    }

    /**
     * Tells what the last conversion met that came to its end.
     *
     * @return what it met, or null before the first
     */
    public Conversion lastConversion() {
        return use(() -> last);
    }

    private Detection judge(byte[] data) {
        int[] lineEnds = new int[1];
        int judged = jkc.judgesBuffer(null, lineEnds, data, data.length, expected.number());
        if (CodeType.isPlain(judged)) {
            jkc.judgesBuffer(null, lineEnds, data, data.length, CodeType.SJIS.number());
            judged = CodeType.ASCII.number();
        }
        return detection(judged, lineEnds[0]);
    }

    private Conversion convert(byte[] data, CodeType to, Jkc.Writer writer) {
        Judged source = new Judged();
        int result =
                jkc.convertBuffer(data, data.length, expected.number(), target(to), false, source, writer, null);
        if (CodeType.isPlain(result)) {
            int sjis = CodeType.SJIS.number(); // as which ASCII is converted anyway
            result = jkc.convertBuffer(data, data.length, sjis, target(to), false, null, writer, null);
            source.type = CodeType.ASCII.number();
        }
        return record(source.type, result);
    }

    private static Detection detection(int judged, int lineEnds) {
        if (judged < Status.EOF) {
            throw new JkcException(judged);
        }
        return new Detection(judged, LineType.found(lineEnds));
    }

    private Conversion record(int source, int result) {
        if (result != Status.SUCCESS) {
            throw new JkcException(result);
        }
        last = new Conversion(CodeType.judged(source).iterator().next(), jkc.getNoCharCount(),
                jkc.getFirstNoCharIndex(), jkc.getLastNoCharIndex(), jkc.getFirstNoChar(), jkc.getLastNoChar());
        return last;
    }

    private static int target(CodeType to) {
        if (to == CodeType.EMPTY) {
            throw new IllegalArgumentException("nothing can be written as " + to);
        }
        return to.number();
    }

    @FunctionalInterface
    private interface Call<T, E extends Exception> {
        T run() throws E;
    }

    private Transcoder set(Runnable option) {
        return use(() -> {
            option.run();
            return this;
        });
    }

    private <T, E extends Exception> T use(Call<T, E> call) throws E {
        takeTurn();
        try {
            if (closed) {
                throw new IllegalStateException("this transcoder is closed");
            }
            return call.run();
        } finally {
            inUse.unlock();
            // Not to be freed by the cleaner while the native side is at work.
            Reference.reachabilityFence(this);
        }
    }

    private void takeTurn() {
        if (inUse.isHeldByCurrentThread()) {
            throw new IllegalStateException("a stream that a transcoder reads or writes must not use that transcoder");
        }
        inUse.lock();
    }

    /** Keeps what the source was judged to be. */
    private static final class Judged implements Jkc.Observer {
        private int type;

        @Override
        public int observe(int codeType, Object user) {
            type = codeType;
            return 0;
        }
    }

    /**
     * Keeps what the stream threw, of which the native side only says that reading failed, and its bytes as long as
     * they are plain text, since that may have to be looked at again.
     */
    private static final class Source extends InputStream {
        private final InputStream in;
        private final ByteArrayOutputStream plainText = new ByteArrayOutputStream();
        private boolean plain = true;
        private Throwable failure;

        Source(InputStream in) {
            this.in = Objects.requireNonNull(in);
        }

        @Override
        public int read() throws IOException {
            return in.read();
        }

        @Override
        public int read(byte[] data, int offset, int length) throws IOException {
            try {
                int count = in.read(data, offset, length);
                keepPlainText(data, offset, count);
                return count;
            } catch (IOException | RuntimeException | Error e) {
                failure = e;
                throw e;
            }
        }

        private void keepPlainText(byte[] data, int offset, int count) {
            for (int i = offset; plain && i < offset + count; ++i) {
                plain = data[i] > 0;
            }
            if (!plain) {
                plainText.reset();
            } else if (count > 0) {
                plainText.write(data, offset, count);
            }
        }

        byte[] plainText() {
            return plainText.toByteArray();
        }

        void rethrow() throws IOException {
            if (failure instanceof IOException e) {
                throw e;
            } else if (failure instanceof RuntimeException e) {
                throw e;
            } else if (failure instanceof Error e) {
                throw e;
            }
        }
    }

    /** Keeps what the stream threw, which a native method cannot declare. */
    private static final class Sink implements Jkc.Writer {
        private final OutputStream out;
        private IOException failure;

        Sink(OutputStream out) {
            this.out = Objects.requireNonNull(out);
        }

        @Override
        public int write(byte[] data, int length, Object user) {
            try {
                out.write(data, 0, length);
                return Status.SUCCESS;
            } catch (IOException e) {
                failure = e;
                return Status.EWRITE;
            }
        }

        void rethrow() throws IOException {
            if (failure != null) {
                throw failure;
            }
        }
    }
}
