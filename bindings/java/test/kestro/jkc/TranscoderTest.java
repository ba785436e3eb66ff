package kestro.jkc;

import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertSame;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;
import java.nio.file.NoSuchFileException;
import java.nio.file.Path;
import java.util.EnumSet;
import java.util.List;
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
        }
        assertEquals("", transcoder.decode(transcoder.encode("", CodeType.SJIS)));
        assertThrows(IllegalArgumentException.class, () -> transcoder.encode(TEXT, CodeType.EMPTY));
    }

    @Test
    public void optionsReachTheConversionAndWhatIsLostIsTold() {
        assertArrayEquals("a?b?".getBytes(), transcoder.encode("a\u1234b\u1235", CodeType.SJIS));
        assertEquals(new Conversion(CodeType.UTF16BE_BOM, 2, 2, 6, 0x1234, 0x1235), transcoder.lastConversion());
        assertArrayEquals("ab".getBytes(), transcoder.suppress(true).encode("a\u1234b", CodeType.SJIS));
        transcoder.lineType(LineType.CRLF).compose(true);
        assertEquals("a\r\n\u304C\r\n", transcoder.decode("a\n\u304B\u3099\r".getBytes(StandardCharsets.UTF_16)));
        assertEquals("a\n", transcoder.lineType(LineType.KEEP).decode("a\n".getBytes()));
    }

    @Test
    public void detectionTellsTypeAndLineEnds() throws Exception {
        byte[] text = (TEXT + "\r\n" + TEXT + "\n").getBytes(Charset.forName("windows-31j"));
        for (Detection found : List.of(transcoder.detect(text), transcoder.detect(new ByteArrayInputStream(text)))) {
            assertEquals(CodeType.SJIS, found.type());
            assertEquals(EnumSet.of(LineType.LF, LineType.CRLF), found.lineEnds());
        }
        Path sample = Path.of(System.getProperty("jkc.samples"), "notice.euc.txt");
        assertEquals(CodeType.EUC, transcoder.expect(CodeType.EUC).detect(sample).type());
        assertThrows(NoSuchFileException.class, () -> transcoder.detect(Path.of("/nowhere")));
    }

    @Test
    public void aTieIsNotGuessedButFollowsTheExpectation() {
        Detection tie = transcoder.detect(AMBIGUOUS);
        assertTrue(tie.candidates().containsAll(EnumSet.of(CodeType.SJIS, CodeType.EUC)));
        assertThrows(JkcException.class, tie::type);
        JkcException refused = assertThrows(JkcException.class, () -> transcoder.decode(AMBIGUOUS));
        assertEquals(tie.judged(), refused.status());
        assertTrue(refused.getMessage().contains("SJIS"));
        assertEquals("爍", transcoder.expect(CodeType.SJIS).decode(AMBIGUOUS));
        assertEquals("燹", transcoder.expect(CodeType.EUC).decode(AMBIGUOUS));
    }

    /** The native side finds that texts of an even length could be UTF-16. */
    @Test
    public void plainTextOfAnyLengthIsAscii() throws Exception {
        for (String text : List.of("a", "ab", "a\n", "abc\n", "plain text\r\n".repeat(2000))) {
            byte[] data = text.getBytes(StandardCharsets.US_ASCII);
            Detection found = transcoder.detect(data);
            assertEquals(text, CodeType.ASCII, found.type());
            assertEquals(text, text.contains("\n"), !found.lineEnds().isEmpty());
            assertEquals(text, found, transcoder.detect(new ByteArrayInputStream(data)));
            assertEquals(text, transcoder.decode(data));
            ByteArrayOutputStream out = new ByteArrayOutputStream();
            Conversion conversion = transcoder.convert(new ByteArrayInputStream(data), out, CodeType.UTF8_BOM);
            assertEquals(new Conversion(CodeType.ASCII, 0, -1, -1, -1, -1), conversion);
            assertEquals("\uFEFF" + text, out.toString(StandardCharsets.UTF_8));
        }
    }

    private interface Action {
        void run() throws IOException;
    }

    private static InputStream input(Action action) {
        return new InputStream() {
            @Override
            public int read() throws IOException {
                action.run();
                return -1;
            }
        };
    }

    private static OutputStream output(Action action) {
        return new OutputStream() {
            @Override
            public void write(int b) throws IOException {
                action.run();
            }
        };
    }

    @Test
    public void whatAStreamThrowsReachesTheCaller() {
        IOException checked = new IOException();
        IllegalArgumentException unchecked = new IllegalArgumentException();
        Action[] actions = {
            () -> {
                throw checked;
            },
            () -> {
                throw unchecked;
            }
        };
        for (Action action : actions) {
            Exception thrown = assertThrows(Exception.class, action::run);
            InputStream good = new ByteArrayInputStream(SJIS);
            assertSame(thrown, assertThrows(Exception.class, () -> transcoder.detect(input(action))));
            assertSame(thrown, assertThrows(Exception.class,
                    () -> transcoder.convert(input(action), OutputStream.nullOutputStream(), CodeType.UTF8)));
            assertSame(thrown, assertThrows(Exception.class,
                    () -> transcoder.convert(good, output(action), CodeType.UTF8)));
        }
        assertEquals(TEXT, transcoder.decode(SJIS));
    }

    @Test
    public void aStreamThatUsesATranscoderIsToldSo() {
        Transcoder other = new Transcoder();
        for (Action action : List.<Action>of(transcoder::close, other::close, () -> other.detect(SJIS))) {
            InputStream good = new ByteArrayInputStream(SJIS);
            for (Action use : List.<Action>of(() -> transcoder.detect(input(action)),
                    () -> transcoder.convert(good, output(action), CodeType.UTF8))) {
                IllegalStateException refused = assertThrows(IllegalStateException.class, use::run);
                assertTrue(refused.getMessage(), refused.getMessage().contains("stream"));
            }
        }
        assertEquals(TEXT, transcoder.decode(other.encode(TEXT, CodeType.SJIS)));
        other.close();
    }

    @Test
    public void closedTranscoderIsRefusedAndCanBeClosedAgain() {
        transcoder.close();
        transcoder.close();
        for (Action use : List.<Action>of(() -> transcoder.decode(SJIS), () -> transcoder.expect(CodeType.SJIS),
                transcoder::lastConversion)) {
            assertThrows(IllegalStateException.class, use::run);
        }
    }

    @Test
    public void threadsTakeTurns() {
        String text = TEXT.repeat(500);
        assertTrue(IntStream.range(0, 200).parallel()
                .allMatch(i -> transcoder.decode(transcoder.encode(text, CodeType.SJIS)).equals(text)));
    }
}
