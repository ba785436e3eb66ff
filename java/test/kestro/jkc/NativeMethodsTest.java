package kestro.jkc;

import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertFalse;
import static org.junit.Assert.assertSame;
import static org.junit.Assert.assertThrows;
import static org.junit.Assert.assertTrue;

import java.io.ByteArrayInputStream;
import java.io.ByteArrayOutputStream;
import java.io.IOException;
import java.io.InputStream;
import java.lang.reflect.Array;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.stream.Stream;
import org.junit.After;
import org.junit.Before;
import org.junit.Test;

public class NativeMethodsTest {
    private static final String TEXT = "吾輩は猫である。名前はまだ無い。\r\n";
    private static final byte[] SJIS = TEXT.getBytes(Charset.forName("windows-31j"));
    private static final byte[] UTF8 = TEXT.getBytes(StandardCharsets.UTF_8);
    /** Three pieces of output and a bit. */
    private static final byte[] LONG_SJIS = TEXT.repeat(600).getBytes(Charset.forName("windows-31j"));

    private static final RuntimeException THROWN = new RuntimeException("thrown by a callback");

    private final Jkc jkc = new Jkc();

    @Before
    public void create() {
        assertEquals(0, jkc._createJkc());
    }

    @After
    public void release() {
        jkc._releaseJkc();
    }

    @Test
    public void creationTellsTheVersion() {
        assertEquals(2.2f, Jkc.nversion, 0);
        assertEquals(2.2f, jkc.getVersion(), 0);
        assertEquals(0, jkc.sts);
    }

    @Test
    public void judgementsAnswerInEveryPlaceThatIsGiven() {
        for (Source source : Source.values()) {
            for (int places = 0; places < 4; ++places) {
                int[] type = (places & 1) != 0 ? new int[] {99, 99} : null;
                int[] line = (places & 2) != 0 ? new int[] {99, 99} : null;
                jkc.sts = 99;
                assertEquals(source.name(), 4, source.judge(jkc, type, line, SJIS, 0));
                assertEquals(source.name(), 4, jkc.sts);
                assertArrayEquals(type == null ? null : new int[] {4, 99}, type);
                assertArrayEquals(line == null ? null : new int[] {4, 99}, line);
            }
            assertEquals("arrays without room", 4, source.judge(jkc, new int[0], new int[0], SJIS, 0));
        }
    }

    @Test
    public void lengthIsClippedToTheArray() {
        assertEquals(4, jkc.judgesBuffer(null, null, SJIS, SJIS.length + 1000, 0));
        assertEquals(0, jkc.judgesBuffer(null, null, SJIS, -1, 0));
        assertEquals(1, jkc.judgesBuffer(null, null, "abc".getBytes(), 3, 0));
        Collector all = new Collector();
        assertEquals(0, jkc.convertBuffer(SJIS, Integer.MAX_VALUE, 4, 15, false, null, all, null));
        assertArrayEquals(UTF8, all.output.toByteArray());
        Collector part = new Collector();
        assertEquals(0, jkc.convertBuffer(SJIS, 16, 4, 15, false, null, part, null));
        assertArrayEquals("吾輩は猫である。".getBytes(StandardCharsets.UTF_8), part.output.toByteArray());
    }

    @Test
    public void conversionsCallObserverAndWriterWithTheUsersObject() {
        for (Source source : Source.values()) {
            Object user = new Object();
            Object[] observed = new Object[2];
            Collector writer = new Collector();
            int result = source.convert(jkc, SJIS, 4, 15, false, (type, object) -> {
                observed[0] = type;
                observed[1] = object;
                return 0;
            }, writer, user);
            assertEquals(source.name(), 0, result);
            assertEquals(4, observed[0]);
            assertSame(user, observed[1]);
            assertSame(user, writer.user);
            assertArrayEquals(source.name(), UTF8, writer.output.toByteArray());

            assertEquals("vetoed", 4, source.convert(jkc, SJIS, CodeType.SJIS, CodeType.UTF8, (type, o) -> 1, writer));
            assertEquals(4, jkc.sts);
            assertEquals("nobody listens", 0, source.convert(jkc, SJIS, CodeType.SJIS, CodeType.UTF8, null, null));
        }
    }

    @Test
    public void emptyInputIsJudgedEmpty() {
        for (Source source : Source.values()) {
            assertEquals(source.name(), 0, source.judge(jkc, null, null, new byte[0], 4));
        }
    }

    @Test
    public void streamThatThrowsAtAnyCallEndsWithReadErrorAndNothingPending() {
        for (int call = 1; call <= 5; ++call) {
            for (Throwable thrown : new Throwable[] {new IOException(), THROWN, new StackOverflowError()}) {
                assertEquals(-7, jkc.judgesStream(null, new int[1], new ThrowingStream(call, thrown), 0));
                assertEquals(-7, jkc.sts);
                Collector writer = new Collector();
                int[] observed = new int[1];
                assertEquals(-7, jkc.convertStream(new ThrowingStream(call, thrown), 4, 15, false, (type, user) -> {
                    observed[0] = type;
                    return 0;
                }, writer, null));
                assertEquals(-7, observed[0]);
                assertEquals(0, writer.calls);
            }
        }
    }

    @Test
    public void brokenStreamsEnd() {
        InputStream alwaysNothing = new AnsweringStream(0);
        assertEquals(0, jkc.judgesStream(null, null, alwaysNothing, 0));
        InputStream moreThanAskedFor = new AnsweringStream(9000);
        assertEquals(-7, jkc.judgesStream(null, null, moreThanAskedFor, 0));
    }

    @Test
    public void writerThatThrowsAtAnyCallStopsTheConversionThere() {
        for (Source source : Source.values()) {
            for (int call = 1; call <= 3; ++call) {
                Collector writer = Collector.throwing(call, THROWN);
                assertSame(THROWN, assertThrows(RuntimeException.class,
                        () -> source.convert(jkc, LONG_SJIS, CodeType.SJIS, CodeType.JIS, null, writer)));
                assertEquals(source.name(), call, writer.calls);
                assertEquals(-8, jkc.sts);
            }
            Collector refusing = Collector.answering(2, -30);
            assertEquals(-30, source.convert(jkc, LONG_SJIS, CodeType.SJIS, CodeType.JIS, null, refusing));
            assertEquals(2, refusing.calls);
        }
    }

    @Test
    public void observerThatThrowsStopsTheConversionWithANonZeroStatus() {
        for (Source source : Source.values()) {
            for (byte[] data : new byte[][] {SJIS, {}}) {
                Collector writer = new Collector();
                assertSame(THROWN, assertThrows(RuntimeException.class,
                        () -> source.convert(jkc, data, CodeType.SJIS, CodeType.UTF8, (type, user) -> {
                            throw THROWN;
                        }, writer)));
                assertEquals(0, writer.calls);
                assertTrue(source.name(), jkc.sts != 0);
            }
        }
    }

    /** Composed UTF-8 is pending up to 8191 bytes; a writer that answers -22 gets them again with a substitute. */
    @Test
    public void moreThanTheArrayHoldsArrivesInTwoPieces() {
        byte[] text = ("か\u3099" + "a".repeat(8184) + "𠮷" + "end").getBytes(StandardCharsets.UTF_8);
        List<Integer> lengths = new ArrayList<>();
        ByteArrayOutputStream last = new ByteArrayOutputStream();
        jkc.setUtfmacTo(true);
        jkc.convertBuffer(text, text.length, 15, 15, false, null, (data, length, user) -> {
            lengths.add(length);
            if (lengths.size() > 1) {
                last.write(data, 0, length);
            }
            return lengths.size() == 1 ? -22 : 0;
        }, null);
        assertEquals(List.of(8191, 8192, 1), lengths);
        assertEquals("が" + "a".repeat(8184) + "𠮷\0?", last.toString(StandardCharsets.UTF_8));
    }

    @Test
    public void objectCreatedOnOneThreadWorksOnAnother() throws InterruptedException {
        Collector writer = new Collector();
        Thread thread = new Thread(() -> Source.SLOW_STREAM.convert(
                jkc, SJIS, CodeType.SJIS, CodeType.UTF8, (type, user) -> 0, writer));
        thread.start();
        thread.join();
        assertArrayEquals(UTF8, writer.output.toByteArray());
    }

    @Test
    public void gettersWorkInsideACallback() {
        Source.STREAM.convert(jkc, SJIS, CodeType.SJIS, CodeType.UTF8, (type, user) -> {
            assertEquals(0, jkc.setLtype(0));
            return 0;
        }, (data, length, user) -> jkc.getNoCharCount());
        assertEquals(0, jkc.sts);
    }

    @Test
    public void nullSourcesAreRefused() {
        jkc.sts = 99;
        assertThrows(NullPointerException.class, () -> jkc.judgesBuffer(null, null, null, 1, 0));
        assertThrows(NullPointerException.class, () -> jkc.judgesStream(null, null, null, 0));
        assertThrows(NullPointerException.class, () -> jkc.judgesFile(null, null, null, 0));
        assertThrows(NullPointerException.class, () -> jkc.convertBuffer(null, 1, 4, 15, false, null, null, null));
        assertThrows(NullPointerException.class, () -> jkc.convertStream(null, 4, 15, false, null, null, null));
        assertThrows(NullPointerException.class, () -> jkc.convertFile(null, 4, 15, false, null, null, null));
        assertEquals(99, jkc.sts);
    }

    @Test
    public void everyMethodRefusesAnObjectWithoutContext() throws IllegalAccessException {
        Jkc released = new Jkc();
        released._createJkc();
        released._releaseJkc();
        Method[] methods = Stream.of(Jkc.class.getMethods())
                .filter(method -> Modifier.isNative(method.getModifiers()) && method.getDeclaringClass() == Jkc.class
                        && !method.getName().equals("_createJkc"))
                .toArray(Method[]::new);
        assertEquals(22, methods.length);
        for (Method method : methods) {
            Object[] arguments = Arrays.stream(method.getParameterTypes())
                    .map(type -> Array.get(Array.newInstance(type, 1), 0)).toArray();
            for (Jkc without : new Jkc[] {new Jkc(), released}) {
                InvocationTargetException refused = assertThrows(method.getName(), InvocationTargetException.class,
                        () -> method.invoke(without, arguments));
                assertEquals(method.getName(), IllegalStateException.class, refused.getCause().getClass());
            }
        }
    }

    @Test
    public void pathsAreCutAtTheirLimit() throws IOException {
        Path file = Files.createTempFile("jkc", ".txt");
        Files.write(file, SJIS);
        byte[] name = Source.pathBytes(file);
        byte[] longest = new byte[4095];
        Arrays.fill(longest, (byte) '/');
        System.arraycopy(name, 0, longest, longest.length - name.length, name.length);
        byte[] tooLong = Arrays.copyOf(longest, 5000);
        Arrays.fill(tooLong, 4095, 5000, (byte) 'x');
        Object[][] cases = {{new byte[0], -5}, {name, 4}, {longest, 4}, {tooLong, 4}, {"/nowhere".getBytes(), -5}};
        for (Object[] row : cases) {
            byte[] path = (byte[]) row[0];
            assertEquals(path.length + " bytes", row[1], jkc.judgesFile(null, null, path, 0));
            assertEquals(row[1], jkc.sts);
            int converted = (int) row[1] > 0 ? 0 : -5;
            assertEquals(path.length + " bytes", converted, jkc.convertFile(path, 4, 15, false, null, null, null));
            assertEquals(converted, jkc.sts);
        }
        Files.delete(file);
    }

    @Test
    public void lineTypeTakesItsFourValuesOnly() {
        for (int before : new int[] {0, 1, 2, 4}) {
            for (int value = -1; value <= 9; ++value) {
                jkc.setLtype(before);
                int expected = value == 0 || value == 1 || value == 2 || value == 4 ? value : before;
                assertEquals(expected, jkc.setLtype(value));
                assertEquals(expected, jkc.getLtype());
            }
        }
    }

    @Test
    public void optionsOfTwoObjectsUsedInTurnStayApart() {
        Jkc other = new Jkc();
        other._createJkc();
        jkc.setLtype(1);
        jkc.setSuppress(true);
        other.setUtfmacTo(true);
        byte[] text = "か\u3099\u1234\r\n".repeat(30).getBytes(StandardCharsets.UTF_8);
        for (int turn = 0; turn < 2; ++turn) {
            Collector first = new Collector();
            Collector second = new Collector();
            assertEquals(0, Source.STREAM.convert(jkc, text, CodeType.UTF8, CodeType.SJIS, null, first));
            assertEquals(0, Source.STREAM.convert(other, text, CodeType.UTF8, CodeType.SJIS, null, second));
            assertEquals(30 * 3, first.output.size()); // か and LF
            assertEquals(30 * 5, second.output.size()); // が, ? and CR LF
            assertTrue(other.utfmacExists());
            // U+1234 stands behind the six bytes of the pair; the mark alone counts too where it is not composed.
            assertEquals(60, jkc.getNoCharCount());
            assertEquals(30, other.getNoCharCount());
            assertEquals(6, other.getFirstNoCharIndex());
            assertEquals(29 * 11 + 6, other.getLastNoCharIndex());
            assertEquals(0x1234, other.getFirstNoChar());
            assertEquals(0x1234, other.getLastNoChar());
        }
        assertTrue(jkc.isSuppress() && !jkc.isUtfmacTo() && !other.isSuppress() && other.isUtfmacTo());
        jkc.setSuppress(false);
        other.setUtfmacTo(false);
        assertFalse(jkc.isSuppress() || other.isUtfmacTo());
        other._releaseJkc();
    }

    @Test
    public void eucCodesAreLookedUpInTheTablesOfTheLastConversion() {
        long[] twoBytes = {0x41, 0x8EB1, 0xA4A2, 0xF4A6};
        long[] threeBytes = {0x8FB0A1, 0x8FEDE3};
        long[] never = {-1, Long.MIN_VALUE, 0, 0xFFFF, 0x8F0000, 0xA4A2L + 0x10000, 0x8FFFFF, Long.MAX_VALUE};
        byte[] euc = TEXT.getBytes(Charset.forName("EUC-JP"));
        for (CodeType type : new CodeType[] {CodeType.EUC, CodeType.EUC_20932}) {
            assertEquals(0, Source.BUFFER.convert(jkc, euc, type, CodeType.UTF8, null, null));
            for (long code : twoBytes) {
                assertTrue(Long.toHexString(code), jkc.isEucLong(code));
            }
            for (long code : threeBytes) {
                assertEquals(Long.toHexString(code), type == CodeType.EUC_20932, jkc.isEucLong(code));
            }
            for (long code : never) {
                assertFalse(Long.toHexString(code), jkc.isEucLong(code));
            }
        }
    }

    @Test
    public void marksAreCompared() {
        assertEquals(1, jkc.cmpBom(15, 16));
        assertEquals(-1, jkc.cmpBom(12, 11));
        assertEquals(0, jkc.cmpBom(11, 14));
    }

    private static final class ThrowingStream extends ByteArrayInputStream {
        private final int call;
        private final Throwable thrown;
        private int calls;

        ThrowingStream(int call, Throwable thrown) {
            super(SJIS);
            this.call = call;
            this.thrown = thrown;
        }

        @Override
        public synchronized int read(byte[] data, int offset, int length) {
            if (++calls == call) {
                NativeMethodsTest.<RuntimeException>sneak(thrown);
            }
            return super.read(data, offset, 3);
        }
    }

    private static final class AnsweringStream extends InputStream {
        private final int answer;

        AnsweringStream(int answer) {
            this.answer = answer;
        }

        @Override
        public int read() {
            throw new AssertionError("the array form is the one to call");
        }

        @Override
        public int read(byte[] data, int offset, int length) {
            return answer;
        }
    }

    @SuppressWarnings("unchecked")
    private static <T extends Throwable> void sneak(Throwable thrown) throws T {
        throw (T) thrown;
    }
}
