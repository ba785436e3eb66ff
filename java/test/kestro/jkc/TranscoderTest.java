package kestro.jkc;

import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertSame;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.io.FilterInputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;
import java.nio.file.NoSuchFileException;
import java.nio.file.Path;
import java.util.EnumSet;
import java.util.List;
import java.util.concurrent.ForkJoinPool;
import java.util.concurrent.TimeUnit;
import java.util.stream.IntStream;
import org.junit.After;
import org.junit.Test;

public class TranscoderTest {
    private static final String TEXT = "吾輩は猫である。名前はまだ無い。";
    private static final byte[] SJIS = TEXT.getBytes(Charset.forName("windows-31j"));
    /** One kanji in Shift_JIS, another in EUC-JP. */
    private static final byte[] AMBIGUOUS = {(byte) 0xE0, (byte) 0xA1};

    private final Transcoder transcoder = new Transcoder();

    @After
    public void close() {
        transcoder.close();
    }

    @Test
    public void textComesBackFromEveryCodeType() {
        for (CodeType type : EnumSet.range(CodeType.ASCII, CodeType.UTF8_BOM)) {
            byte[] bytes = transcoder.encode(TEXT, type);
            assertEquals(type.name(), TEXT, transcoder.expect(type).decode(bytes));
            assertEquals(0, transcoder.lastConversion().lostCount());
        }
        assertEquals("", transcoder.decode(new byte[0]));
        assertArrayEquals(new byte[0], transcoder.encode("", CodeType.SJIS));
        assertThrows(IllegalArgumentException.class, () -> transcoder.encode(TEXT, CodeType.EMPTY));
    }

    @Test
    public void whatIsLostIsToldWithItsPlaceInTheString() {
        assertArrayEquals("a?b?".getBytes(), transcoder.encode("a\u1234b\u5678".replace('\u5678', '\u1235'), CodeType.SJIS));
        assertEquals(new Conversion(CodeType.UTF16BE_BOM, 2, 2, 6, 0x1234, 0x1235), transcoder.lastConversion());
        assertArrayEquals("ab".getBytes(), transcoder.suppress(true).encode("a\u1234b", CodeType.SJIS));
    }

    @Test
    public void optionsReachTheConversion() {
        transcoder.lineType(LineType.CRLF).compose(true);
        assertEquals("a\r\n\u304C\r\n", transcoder.decode("a\n\u304B\u3099\r".getBytes(StandardCharsets.UTF_16)));
        assertEquals("a\n", transcoder.lineType(LineType.KEEP).decode("a\n".getBytes()));
    }

    @Test
    public void detectionTellsTypeAndLineEnds() throws IOException {
        byte[] text = (TEXT + "\r\n" + TEXT + "\n").getBytes(Charset.forName("windows-31j"));
        for (Detection found : List.of(transcoder.detect(text), transcoder.detect(new ByteArrayInputStream(text)))) {
            assertEquals(CodeType.SJIS, found.type());
            assertEquals(EnumSet.of(LineType.LF, LineType.CRLF), found.lineEnds());
        }
        Path sample = Path.of(System.getProperty("jkc.samples"), "notice.euc.txt");
        assertTrue(transcoder.detect(sample).type().name().startsWith("EUC"));
        assertThrows(NoSuchFileException.class, () -> transcoder.detect(Path.of("/nowhere")));
    }

    @Test
    public void aTieIsNotGuessedButFollowsTheExpectation() {
        Detection tie = transcoder.detect(AMBIGUOUS);
        assertTrue(tie.candidates().containsAll(EnumSet.of(CodeType.SJIS, CodeType.EUC)));
        assertThrows(JkcException.class, tie::type);
        JkcException refused = assertThrows(JkcException.class, () -> transcoder.decode(AMBIGUOUS));
        assertEquals(tie.candidates(), CodeType.judged(refused.status()));
        assertTrue(refused.getMessage().contains("SJIS"));
        assertEquals("爍", transcoder.expect(CodeType.SJIS).decode(AMBIGUOUS));
        assertEquals("燹", transcoder.expect(CodeType.EUC).decode(AMBIGUOUS));
    }

    /** The native side finds that texts of an even length could be UTF-16. */
    @Test
    public void plainTextOfAnyLengthIsAscii() throws IOException {
        for (String text : List.of("a", "ab", "a\n", "abc\n", "plain text\r\n".repeat(2000))) {
            byte[] data = text.getBytes(StandardCharsets.US_ASCII);
            Detection found = transcoder.detect(data);
            assertEquals(text, CodeType.ASCII, found.type());
            assertEquals(text, text.contains("\n"), !found.lineEnds().isEmpty());
            assertEquals(text, found, transcoder.detect(new ByteArrayInputStream(data)));
            assertEquals(text, transcoder.decode(data));
            ByteArrayOutputStream out = new ByteArrayOutputStream();
            Conversion conversion = transcoder.convert(new ByteArrayInputStream(data), out, CodeType.UTF8_BOM);
            assertEquals(CodeType.ASCII, conversion.source());
            assertEquals("\uFEFF" + text, out.toString(StandardCharsets.UTF_8));
        }
    }

    @Test
    public void streamsAreConvertedAndLeftOpen() throws IOException {
        boolean[] closed = new boolean[1];
        InputStream in = new FilterInputStream(new ByteArrayInputStream(SJIS)) {
            @Override
            public void close() {
                closed[0] = true;
            }
        };
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        assertEquals(new Conversion(CodeType.SJIS, 0, -1, -1, -1, -1), transcoder.convert(in, out, CodeType.UTF8));
        assertEquals(TEXT, out.toString(StandardCharsets.UTF_8));
        assertEquals(false, closed[0]);
    }

    @Test
    public void whatAStreamThrowsReachesTheCaller() throws IOException {
        for (Exception thrown : new Exception[] {new IOException(), new IllegalArgumentException()}) {
            InputStream in = new FilterInputStream(new ByteArrayInputStream(SJIS)) {
                @Override
                public int read(byte[] data, int offset, int length) throws IOException {
                    throw thrown instanceof IOException e ? e : new IOException(fail((RuntimeException) thrown));
                }
            };
            OutputStream out = new OutputStream() {
                @Override
                public void write(int b) throws IOException {
                    throw thrown instanceof IOException e ? e : new IOException(fail((RuntimeException) thrown));
                }
            };
            InputStream good = new ByteArrayInputStream(SJIS);
            assertSame(thrown, assertThrows(Exception.class, () -> transcoder.detect(in)));
            assertSame(thrown, assertThrows(Exception.class, () -> transcoder.convert(in, out, CodeType.UTF8)));
            assertSame(thrown, assertThrows(Exception.class, () -> transcoder.convert(good, out, CodeType.UTF8)));
        }
        assertEquals(TEXT, transcoder.decode(SJIS));
    }

    private static String fail(RuntimeException thrown) {
        throw thrown;
    }

    @Test
    public void closedTranscoderIsRefusedAndCanBeClosedAgain() {
        transcoder.close();
        transcoder.close();
        assertThrows(IllegalStateException.class, () -> transcoder.decode(SJIS));
        assertThrows(IllegalStateException.class, () -> transcoder.expect(CodeType.SJIS));
        assertThrows(IllegalStateException.class, transcoder::lastConversion);
    }

    @Test
    public void aStreamThatUsesATranscoderIsToldSo() throws IOException {
        Transcoder other = new Transcoder();
        for (Runnable call : List.<Runnable>of(transcoder::close, () -> other.detect(SJIS), other::close)) {
            OutputStream out = new OutputStream() {
                @Override
                public void write(int b) {
                    call.run();
                }
            };
            IllegalStateException refused = assertThrows(IllegalStateException.class,
                    () -> transcoder.convert(new ByteArrayInputStream(SJIS), out, CodeType.UTF8));
            assertTrue(refused.getMessage(), refused.getMessage().contains("stream"));
        }
        assertEquals(TEXT, transcoder.decode(SJIS));
        other.close();
    }

    @Test
    public void threadsTakeTurns() throws InterruptedException {
        byte[] text = TEXT.repeat(500).getBytes(Charset.forName("windows-31j"));
        ForkJoinPool pool = new ForkJoinPool(4);
        List<Integer> lengths = pool.submit(() -> IntStream.range(0, 200).parallel()
                .mapToObj(i -> transcoder.decode(text).length()).distinct().toList()).join();
        pool.shutdown();
        assertTrue(pool.awaitTermination(10, TimeUnit.SECONDS));
        assertEquals(List.of(500 * TEXT.length()), lengths);
    }
}
