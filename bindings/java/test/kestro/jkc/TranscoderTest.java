package kestro.jkc;

import static org.junit.Assert.*;

import java.io.*;
import java.lang.reflect.Field;
import java.nio.charset.*;
import java.nio.file.*;
import java.util.*;
import java.util.concurrent.*;
import java.util.regex.Pattern;
import java.util.stream.*;
import org.junit.Test;

public class TranscoderTest {
    private static final Charset CP932 = Charset.forName("windows-31j");
    private static final String TEXT = "吾輩は猫である。名前はまだ無い。";
    private static final byte[] SJIS = TEXT.getBytes(CP932);
    /** One kanji in Shift_JIS, another in EUC-JP. */
    private static final byte[] AMBIGUOUS = {(byte) 0xE0, (byte) 0xA1};

    private final Transcoder transcoder = new Transcoder();

    @Test
    public void numbersAreThoseOfTheHeader() throws Exception {
        Map<String, Integer> own = new TreeMap<>();
        for (Field status : Status.class.getDeclaredFields()) {
            own.put(status.getName(), status.getInt(null));
        }
        EnumSet.allOf(CodeType.class).forEach(type -> own.put("TYPE_" + type, type.number()));
        EnumSet.allOf(LineType.class).forEach(type -> own.put("LINE_" + type, type.number()));
        String names = "(TYPE|LINE)_.*|" + String.join("|", own.keySet());
        String header = Files.readString(Path.of(System.getProperty("jkc.header")));
        assertEquals(Pattern.compile("JKC_(\\w+) = (-?\\d+)").matcher(header).results()
                .filter(found -> found.group(1).matches(names))
                .collect(Collectors.toMap(found -> found.group(1), found -> Integer.valueOf(found.group(2)))), own);
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
        assertEquals("a?b?", new String(transcoder.encode("a\u1234b\u1235", CodeType.SJIS)));
        assertEquals(new Conversion(CodeType.UTF16BE_BOM, 2, 2, 6, 0x1234, 0x1235), transcoder.lastConversion());
        assertEquals("ab", new String(transcoder.suppress(true).encode("a\u1234b", CodeType.SJIS)));
        transcoder.lineType(LineType.CRLF).compose(true);
        assertEquals("a\r\n\u304C\r\n", transcoder.decode("a\n\u304B\u3099\r".getBytes(StandardCharsets.UTF_16)));
    }

    @Test
    public void aTieIsNotGuessedButFollowsTheExpectation() throws Exception {
        Detection tie = transcoder.detect(AMBIGUOUS);
        assertTrue(tie.candidates().containsAll(EnumSet.of(CodeType.SJIS, CodeType.EUC)));
        assertThrows(JkcException.class, tie::type);
        JkcException refused = assertThrows(JkcException.class, () -> transcoder.decode(AMBIGUOUS));
        assertEquals(tie.judged(), refused.status());
        assertTrue(refused.getMessage().contains("SJIS"));
        for (CodeType type : EnumSet.of(CodeType.SJIS, CodeType.EUC)) {
            transcoder.expect(type);
            assertKnown(type, type == CodeType.SJIS ? "爍" : "燹", AMBIGUOUS);
        }
        byte[] nonsense = "\u00FF\u00FF\u00FF".getBytes(StandardCharsets.ISO_8859_1);
        Detection none = transcoder.detect(nonsense);
        assertEquals(-1, none.judged());
        assertEquals(EnumSet.noneOf(LineType.class), none.lineEnds());
        assertFalse(none.binary());
        assertTrue(transcoder.detect(new byte[100]).binary());
        assertThrows(JkcException.class, none::type);
        assertThrows(JkcException.class, () -> transcoder.decode(nonsense));
    }

    /** The native side finds that plain text of an even length could be UTF-16. */
    @Test
    public void typeAndLineEndsAreTold() throws Exception {
        for (String text : List.of("a", "ab", "a\n", "abc\n", "plain text\r\n".repeat(2000))) {
            assertKnown(CodeType.ASCII, text, text.getBytes());
        }
        for (String text : List.of(TEXT, "a".repeat(9000) + TEXT, TEXT + "\r" + TEXT + "\n", TEXT + "\r\n")) {
            assertKnown(CodeType.SJIS, text, text.getBytes(CP932));
        }
        Path sample = Path.of(System.getProperty("jkc.samples"), "notice.euc.txt");
        assertEquals(CodeType.EUC, transcoder.expect(CodeType.EUC).detect(sample).type());
        assertThrows(NoSuchFileException.class, () -> transcoder.detect(Path.of("/nowhere")));
    }

    private void assertKnown(CodeType type, String text, byte[] data) throws IOException {
        Detection found = transcoder.detect(data);
        assertEquals(text, type, found.type());
        String[] ends = text.split("[^\r\n]+");
        assertEquals(text, IntStream.range(1, ends.length)
                .mapToObj(i -> ends[i].equals("\n") ? LineType.LF : ends[i].equals("\r") ? LineType.CR : LineType.CRLF)
                .collect(Collectors.toSet()), found.lineEnds());
        assertEquals(text, found, transcoder.detect(new ByteArrayInputStream(data)));
        assertEquals(text, transcoder.decode(data));
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        Conversion conversion = transcoder.convert(new ByteArrayInputStream(data), out, CodeType.UTF8_BOM);
        assertEquals(new Conversion(type, 0, -1, -1, -1, -1), conversion);
        assertEquals("\uFEFF" + text, out.toString(StandardCharsets.UTF_8));
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

    private static OutputStream output(Action action, OutputStream to) {
        return new FilterOutputStream(to) {
            @Override
            public void write(byte[] data, int offset, int length) throws IOException {
                action.run();
                to.write(data, offset, length);
            }
        };
    }

    /** Both what a stream throws itself and what it gets for using the transcoder that uses it. */
    @Test
    public void whatAStreamThrowsReachesTheCaller() {
        OutputStream sink = OutputStream.nullOutputStream();
        IOException checked = new IOException();
        IllegalArgumentException unchecked = new IllegalArgumentException();
        StackOverflowError error = new StackOverflowError();
        List<Action> actions = List.of(() -> {
            throw checked;
        }, () -> {
            throw unchecked;
        }, () -> {
            throw error;
        }, transcoder::close, () -> transcoder.detect(SJIS));
        for (Action action : actions) {
            for (Action use : List.<Action>of(() -> transcoder.detect(input(action)),
                    () -> transcoder.convert(input(action), sink, CodeType.UTF8),
                    () -> transcoder.convert(new ByteArrayInputStream(SJIS), output(action, sink), CodeType.UTF8))) {
                Throwable thrown = assertThrows(Throwable.class, use::run);
                if (actions.indexOf(action) < 3) {
                    assertSame(List.of(checked, unchecked, error).get(actions.indexOf(action)), thrown);
                } else {
                    assertEquals(IllegalStateException.class, thrown.getClass());
                    assertTrue(thrown.getMessage(), thrown.getMessage().contains("stream"));
                }
            }
        }
        assertEquals(TEXT, transcoder.decode(SJIS));
        transcoder.close();
        transcoder.close();
        assertThrows(IllegalStateException.class, transcoder::lastConversion);
    }

    /** Each stream reads or writes through a transcoder of its own, whose streams do the same. */
    private static String convertedWithin(Transcoder transcoder, String text, int depth) throws IOException {
        byte[] bytes = text.getBytes(CP932);
        ByteArrayOutputStream out = new ByteArrayOutputStream();
        Action inside = () -> {
            try (Transcoder other = new Transcoder()) {
                assertEquals(text, depth > 0 ? convertedWithin(other, text, depth - 1) : other.decode(bytes));
            }
        };
        InputStream in = new SequenceInputStream(new ByteArrayInputStream(bytes), input(inside));
        transcoder.convert(in, output(inside, out), CodeType.UTF8);
        return out.toString(StandardCharsets.UTF_8);
    }

    /** Some have one of their own, others take turns with one that is closed in the middle. */
    @Test
    public void threadsAndStreamsWithTranscodersDoNotDisturbEachOther() throws Exception {
        String text = TEXT.repeat(300);
        Transcoder closed = new Transcoder();
        ExecutorService threads = Executors.newFixedThreadPool(8);
        List<Future<?>> results = IntStream.range(0, 200).<Future<?>>mapToObj(i -> threads.submit(() -> {
            assertEquals(text, transcoder.decode(transcoder.encode(text, CodeType.SJIS)));
            try (Transcoder own = new Transcoder()) {
                assertEquals(text, convertedWithin(own, text, i % 4));
            }
            try {
                assertEquals(text, closed.decode(text.getBytes(CP932)));
            } catch (IllegalStateException e) {
                assertTrue(e.getMessage(), e.getMessage().contains("closed"));
            }
            if (i == 100) {
                closed.close();
            }
            return null;
        })).toList();
        for (Future<?> result : results) {
            result.get();
        }
        threads.shutdown();
        assertThrows(IllegalStateException.class, closed::lastConversion);
    }
}
