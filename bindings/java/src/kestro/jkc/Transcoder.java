package kestro.jkc;

import java.io.Closeable;
import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.List;
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
 * <p>The encoding is decided from the bytes, and a tie is not guessed: {@link #expect} decides it. Or {@link #from} tells
 * it: then nothing is decided, and streams are converted as they come.
 *
 * <p>Texts may be of any length: streams are converted in constant memory. Where the encoding is to be decided, all of the
 * text is read first. A file is read twice then; of a stream up to 16 MB are kept in memory, and what is beyond that in
 * a temporary file.
 *
 * <p>Different transcoders may be used by any number of threads at once. One is used by one thread at a time: others wait
 * for it. A stream that a transcoder reads or writes may use other transcoders, but not that one. Streams in two threads
 * that use each other's transcoder wait for each other for ever. The streams and readers that a transcoder makes are
 * independent of it once they are made.
 *
 * <p>Methods throw {@link NullPointerException} for a null argument and {@link IllegalStateException} once the
 * transcoder is closed. One that is never closed is freed some time after the last use.
 */
public final class Transcoder implements AutoCloseable {
    /** What the source of a string is told to be. */
    private static final CodeType TEXT = CodeType.UTF16BE_BOM;

    private static final int BUFFER_SIZE = 1 << 16;

    private final ReentrantLock inUse = new ReentrantLock();
    private boolean closed;
    private CodeType expected = CodeType.EMPTY;
    private CodeType told = CodeType.EMPTY;
    private LineType lineType = LineType.KEEP;
    private LossPolicy onLoss = LossPolicy.CLASSIC;
    private boolean compose;
    private boolean suppress;
    private int keep = 1000;
    private Conversion last;
    private Losses losses = Losses.NONE;
    /** The converter of the last route, for the next text. */
    private FedConverter converter;
    private FedConverter.Route route;

    /** Makes a transcoder with every option off. */
    public Transcoder() {
        Jkc.load();
    }

    /** Frees the native memory. A second call does nothing. */
    @Override
    public void close() {
        takeTurn();
        try {
            closed = true;
            if (converter != null) {
                converter.close();
            }
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
        Objects.requireNonNull(type);
        return set(() -> expected = type);
    }

    /**
     * Tells the code type that texts are in, whatever they look like. A byte-order mark at the front of a text in a
     * Unicode form is passed over, whether the type has one or not.
     *
     * @param type the code type, {@link CodeType#EMPTY} to have it decided again
     * @return this transcoder
     */
    public Transcoder from(CodeType type) {
        Objects.requireNonNull(type);
        return set(() -> told = type);
    }

    /**
     * Sets the line ends that conversions write.
     *
     * @param type the line type
     * @return this transcoder
     */
    public Transcoder lineType(LineType type) {
        Objects.requireNonNull(type);
        return set(() -> lineType = type);
    }

    /**
     * Sets what conversions do with what cannot be converted. At first that is {@link LossPolicy#CLASSIC}.
     *
     * @param policy what to do
     * @return this transcoder
     */
    public Transcoder onLoss(LossPolicy policy) {
        Objects.requireNonNull(policy);
        return set(() -> onLoss = policy);
    }

    /**
     * Sets how many losses of a conversion are kept for {@link #losses()}. At first that is 1000.
     *
     * @param most how many; 0 saves the work of finding lines and columns
     * @return this transcoder
     */
    public Transcoder keepLosses(int most) {
        if (most < 0) {
            throw new IllegalArgumentException("less than no losses");
        }
        return set(() -> keep = most);
    }

    /**
     * Sets what conversions with {@link LossPolicy#CLASSIC} do with unmappable characters.
     *
     * @param leaveOut true to leave them out, false to write a replacement
     * @return this transcoder
     */
    public Transcoder suppress(boolean leaveOut) {
        return set(() -> suppress = leaveOut);
    }

    /**
     * Sets whether conversions from Unicode compose a base character and its combining mark.
     *
     * @param pairs true to compose them
     * @return this transcoder
     */
    public Transcoder compose(boolean pairs) {
        return set(() -> compose = pairs);
    }

    /**
     * Decides what bytes in memory are in. What {@link #from} told does not matter here.
     *
     * @param data the bytes
     * @return what was decided
     */
    public Detection detect(byte[] data) {
        Objects.requireNonNull(data);
        return use(() -> find(data).detection());
    }

    /**
     * Decides what a stream is in, which is read to its end and stays open.
     *
     * @param in the stream
     * @return what was decided
     * @throws IOException thrown by the stream
     */
    public Detection detect(InputStream in) throws IOException {
        Objects.requireNonNull(in);
        return use(() -> find(in, OutputStream.nullOutputStream()).detection());
    }

    /**
     * Decides what a file is in.
     *
     * @param file the file
     * @return what was decided
     * @throws IOException when the file cannot be opened or read
     */
    public Detection detect(Path file) throws IOException {
        try (InputStream in = Files.newInputStream(file)) {
            return detect(in);
        }
    }

    /**
     * Makes a string of bytes in any encoding. {@link #lastConversion()} and {@link #losses()} tell what was lost.
     *
     * @param data the bytes
     * @return the text
     * @throws JkcException when no single code type fits, or the loss policy ends the conversion
     */
    public String decode(byte[] data) {
        Objects.requireNonNull(data);
        return use(() -> {
            CodeType source = source(data).type;
            if (source == CodeType.EMPTY) {
                return record(source, "", Losses.NONE);
            }
            FedConverter fed = converter(source, FedConverter.CHARS, false);
            return record(source, Whole.decode(fed, data), fed.losses());
        });
    }

    /**
     * Writes a string in an encoding. {@link #lastConversion()} and {@link #losses()} tell what was lost, with positions
     * that are twice the index in the string.
     *
     * @param text the text
     * @param to the encoding wanted; {@link CodeType#ASCII} is written as Shift_JIS
     * @return the bytes
     * @throws JkcException when the loss policy ends the conversion
     */
    public byte[] encode(String text, CodeType to) {
        char[] in = new char[1 + text.length()];
        in[0] = '\uFEFF'; // so that one in the text is a character
        text.getChars(0, text.length(), in, 1);
        boolean isBeyondBmp = to == CodeType.JIS && text.codePointCount(0, text.length()) != text.length();
        target(to);
        return use(() -> {
            if (text.isEmpty()) {
                return record(TEXT, new byte[0], Losses.NONE);
            }
            FedConverter fed = converter(FedConverter.CHARS, to, isBeyondBmp);
            return record(TEXT, Whole.encode(fed, in), fed.losses().ofText());
        });
    }

    /**
     * Converts bytes in memory.
     *
     * @param data the bytes
     * @param to the encoding wanted; {@link CodeType#ASCII} is written as Shift_JIS
     * @return the converted bytes
     * @throws JkcException when no single code type fits, or the loss policy ends the conversion
     */
    public byte[] convert(byte[] data, CodeType to) {
        Objects.requireNonNull(data);
        target(to);
        return use(() -> {
            Source source = source(data);
            if (source.type == CodeType.EMPTY) {
                return record(source.type, new byte[0], Losses.NONE);
            }
            FedConverter fed = converter(source.type, to, source.isBeyondBmp);
            return record(source.type, Whole.convert(fed, data), fed.losses());
        });
    }

    /**
     * Converts a stream. Both streams stay open. Where the code type is to be decided, all of the source is read before
     * anything is written.
     *
     * @param in the source
     * @param out receives the converted bytes
     * @param to the encoding wanted; {@link CodeType#ASCII} is written as Shift_JIS
     * @return what the conversion met
     * @throws IOException thrown by one of the streams
     * @throws JkcException when no single code type fits (nothing is written then), or the loss policy ends the conversion
     */
    public Conversion convert(InputStream in, OutputStream out, CodeType to) throws IOException {
        Objects.requireNonNull(in);
        Objects.requireNonNull(out);
        return use(() -> {
            try (FedStream stream = stream(in, null, to)) {
                return convert(stream, out);
            }
        });
    }

    /**
     * Converts a file. The stream stays open.
     *
     * @param file the source
     * @param out receives the converted bytes
     * @param to the encoding wanted; {@link CodeType#ASCII} is written as Shift_JIS
     * @return what the conversion met
     * @throws IOException when the file cannot be opened or read, or thrown by the stream
     * @throws JkcException as for a stream
     */
    public Conversion convert(Path file, OutputStream out, CodeType to) throws IOException {
        Objects.requireNonNull(file);
        Objects.requireNonNull(out);
        return use(() -> {
            try (FedStream stream = stream(file, to)) {
                return convert(stream, out);
            }
        });
    }

    /**
     * Makes a stream of converted bytes, which reads the source when it is read.
     *
     * @param in the source, which is closed with the stream
     * @param to the encoding wanted
     * @return the stream
     * @throws JkcException when no single code type fits
     * @throws IOException thrown by the source, where the code type is to be decided
     */
    public ConvertingInputStream reading(InputStream in, CodeType to) throws IOException {
        Objects.requireNonNull(in);
        return use(() -> new ConvertingInputStream(stream(in, in, to)));
    }

    /**
     * Makes a reader of bytes in any encoding, which reads the source when it is read.
     *
     * @param in the source, which is closed with the reader
     * @return the reader
     * @throws JkcException when no single code type fits
     * @throws IOException thrown by the source, where the code type is to be decided
     */
    public ConvertingReader reader(InputStream in) throws IOException {
        Objects.requireNonNull(in);
        return use(() -> new ConvertingReader(stream(in, in, FedConverter.CHARS)));
    }

    /**
     * Makes a reader of a file in any encoding.
     *
     * @param file the file
     * @return the reader
     * @throws JkcException when no single code type fits
     * @throws IOException when the file cannot be opened or read
     */
    public ConvertingReader reader(Path file) throws IOException {
        Objects.requireNonNull(file);
        return use(() -> new ConvertingReader(stream(file, FedConverter.CHARS)));
    }

    /**
     * Tells what the last conversion met that came to its end. A stream or reader tells of its own.
     *
     * @return what it met, or null before the first
     */
    public Conversion lastConversion() {
        return use(() -> last);
    }

    /**
     * Tells what the last conversion lost that came to its end. A stream or reader tells of its own.
     *
     * @return the losses in the order of the text; the first ones only, if there were more than {@link #keepLosses} says
     */
    public List<Loss> losses() {
        return use(() -> losses.kept());
    }

    /** What a text is in, and what else is to be known to convert it. */
    private record Source(CodeType type, boolean isBeyondBmp) {
        static Source of(FedDetector.Found found) {
            CodeType type = found.detection().type();
            return new Source(type, found.isBeyondBmp() && type.isUnicode());
        }
    }

    private Source source(byte[] data) {
        return told == CodeType.EMPTY ? Source.of(find(data)) : new Source(told, false);
    }

    private FedDetector.Found find(byte[] data) {
        try (FedDetector detector = new FedDetector(expected)) {
            detector.feed(data, 0, data.length);
            return detector.finish();
        }
    }

    private FedDetector.Found find(InputStream in, OutputStream copy) throws IOException {
        try (FedDetector detector = new FedDetector(expected)) {
            byte[] buffer = new byte[BUFFER_SIZE];
            for (int count; (count = in.read(buffer, 0, BUFFER_SIZE)) >= 0;) {
                detector.feed(buffer, 0, count);
                copy.write(buffer, 0, count);
            }
            return detector.finish();
        }
    }

    private FedStream stream(InputStream in, Closeable closed, CodeType to) throws IOException {
        target(to);
        if (told != CodeType.EMPTY) {
            return stream(in, closed, new Source(told, false), to);
        }
        try (Spool spool = new Spool()) {
            Source source = Source.of(find(in, spool));
            InputStream content = spool.content();
            return stream(content, () -> {
                try (content; closed) {
                    // Both, whatever one of them throws.
                }
            }, source, to);
        }
    }

    private FedStream stream(Path file, CodeType to) throws IOException {
        target(to);
        Source source = new Source(told, false);
        if (told == CodeType.EMPTY) {
            try (InputStream in = Files.newInputStream(file)) {
                source = Source.of(find(in, OutputStream.nullOutputStream()));
            }
        }
        InputStream in = Files.newInputStream(file);
        return stream(in, in, source, to);
    }

    private FedStream stream(InputStream in, Closeable closed, Source source, CodeType to) {
        FedConverter fed =
                source.type == CodeType.EMPTY ? null : new FedConverter(route(source.type, to, source.isBeyondBmp));
        return new FedStream(in, closed, source.type, fed);
    }

    private Conversion convert(FedStream stream, OutputStream out) throws IOException {
        byte[] buffer = new byte[BUFFER_SIZE];
        for (int count; (count = stream.read(buffer, 0, BUFFER_SIZE)) >= 0;) {
            out.write(buffer, 0, count);
        }
        return record(stream.source(), stream.conversion(), stream.losses());
    }

    private FedConverter.Route route(CodeType from, CodeType to, boolean isBeyondBmp) {
        return new FedConverter.Route(from, to, lineType, onLoss, compose, suppress, isBeyondBmp, keep);
    }

    /** For a text in memory. */
    private FedConverter converter(CodeType from, CodeType to, boolean isBeyondBmp) {
        FedConverter.Route wanted = route(from, to, isBeyondBmp);
        if (wanted.equals(route)) {
            converter.reset();
            return converter;
        }
        if (converter != null) {
            converter.close();
            route = null;
        }
        converter = new FedConverter(wanted);
        route = wanted;
        return converter;
    }

    private <T> T record(CodeType source, T result, Losses met) {
        last = Conversion.of(source, met);
        losses = met;
        return result;
    }

    private static void target(CodeType to) {
        if (Objects.requireNonNull(to) == CodeType.EMPTY) {
            throw new IllegalArgumentException("nothing can be written as " + to);
        }
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
        }
    }

    private void takeTurn() {
        if (inUse.isHeldByCurrentThread()) {
            throw new IllegalStateException("a stream that a transcoder reads or writes must not use that transcoder");
        }
        inUse.lock();
    }
}
