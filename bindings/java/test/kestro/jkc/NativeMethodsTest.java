package kestro.jkc;

import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;
import static org.junit.Assert.assertNotEquals;
import static org.junit.Assert.assertSame;
import static org.junit.Assert.assertThrows;

import java.io.ByteArrayInputStream;
import java.io.IOException;
import java.io.InputStream;
import java.lang.reflect.Array;
import java.lang.reflect.InvocationTargetException;
import java.lang.reflect.Method;
import java.lang.reflect.Modifier;
import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import org.junit.After;
import org.junit.Before;
import org.junit.Test;

public class NativeMethodsTest {
    private static final String TEXT = "吾輩は猫である。名前はまだ無い。\r\n";
    private static final byte[] SJIS = TEXT.getBytes(Charset.forName("windows-31j"));
    private static final byte[] UTF8 = TEXT.getBytes(StandardCharsets.UTF_8);
    private static final byte[] SEVERAL_PIECES = TEXT.repeat(600).getBytes(Charset.forName("windows-31j"));
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
    public void judgementsAnswerInEveryPlaceThatIsGiven() throws Exception {
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
            assertEquals("empty", 0, source.judge(jkc, null, null, new byte[0], 4));
        }
    }

    @Test
    public void lengthIsClippedToTheArray() {
        int[][] lengthsAndOutputs = {{Integer.MAX_VALUE, UTF8.length}, {16, 24}, {0, 0}, {-1, 0}};
        for (int[] row : lengthsAndOutputs) {
            assertEquals(row[1] == 0 ? 0 : 4, jkc.judgesBuffer(null, null, SJIS, row[0], 0));
            Collector writer = new Collector();
            assertEquals(0, jkc.convertBuffer(SJIS, row[0], 4, 15, false, null, writer, null));
            assertArrayEquals(Arrays.copyOf(UTF8, row[1]), writer.output.toByteArray());
        }
    }

    /** On another thread than the one that created the object: each call has to use its own environment. */
    @Test
    public void conversionsCallObserverAndWriterWithTheUsersObject() throws Exception {
        Throwable[] failure = new Throwable[1];
        Thread other = new Thread(() -> {
            for (Source source : Source.values()) {
                Object user = new Object();
                Collector writer = new Collector();
                Jkc.Observer observer = (type, object) -> type == 4 && object == user ? jkc.getLtype() : 99;
                try {
                    assertEquals(0, source.convert(jkc, SJIS, 4, 15, false, observer, writer, user));
                    assertSame(user, writer.user);
                    assertArrayEquals(source.name(), UTF8, writer.output.toByteArray());
                    assertEquals("vetoed", 4, source.convert(jkc, SJIS, 4, 15, false, observer, writer, null));
                    assertEquals(4, jkc.sts);
                    assertEquals("unheard", 0, source.convert(jkc, SJIS, 4, 15, false, null, null, null));
                } catch (Throwable e) {
                    failure[0] = e;
                }
            }
        });
        other.start();
        other.join();
        assertSame(null, failure[0]);
    }

    @Test
    public void streamThatFailsAtAnyCallIsAReadErrorWithNothingPending() {
        for (int call = 1; call <= 5; ++call) {
            int failing = call;
            for (Throwable thrown : new Throwable[] {new IOException(), THROWN, new StackOverflowError(), null}) {
                int[] calls = new int[1];
                InputStream stream = new ByteArrayInputStream(SJIS) {
                    @Override
                    public synchronized int read(byte[] data, int offset, int length) {
                        if (++calls[0] % failing == 0) {
                            NativeMethodsTest.<RuntimeException>sneak(thrown);
                            return length + 1; // more than it was asked for
                        }
                        return super.read(data, offset, 3);
                    }
                };
                assertEquals(-7, jkc.judgesStream(null, new int[1], stream, 0));
                assertEquals(-7, jkc.sts);
                Collector writer = new Collector();
                assertEquals(-7, jkc.convertStream(stream, 4, 15, false, null, writer, null));
                assertEquals(List.of(), writer.lengths);
                assertEquals(2 * call, calls[0]);
            }
        }
        InputStream neverAnything = new ByteArrayInputStream(SJIS) {
            @Override
            public synchronized int read(byte[] data, int offset, int length) {
                return 0;
            }
        };
        assertEquals(0, jkc.judgesStream(null, null, neverAnything, 0));
    }

    @SuppressWarnings("unchecked")
    private static <T extends Throwable> void sneak(Throwable thrown) throws T {
        if (thrown != null) {
            throw (T) thrown;
        }
    }

    @Test
    public void callbackThatThrowsStopsTheConversionThere() throws Exception {
        for (Source source : Source.values()) {
            for (int call = 1; call <= 3; ++call) {
                Collector writer = Collector.at(call, 0, THROWN);
                assertSame(THROWN, assertThrows(RuntimeException.class,
                        () -> source.convert(jkc, SEVERAL_PIECES, 4, 2, false, null, writer, null)));
                assertEquals(source.name(), call, writer.lengths.size());
                assertEquals(-8, jkc.sts);
                Collector refusing = Collector.at(call, -30, null);
                assertEquals(-30, source.convert(jkc, SEVERAL_PIECES, 4, 2, false, null, refusing, null));
                assertEquals(source.name(), call, refusing.lengths.size());
            }
            for (byte[] data : new byte[][] {SJIS, {}}) {
                Collector writer = new Collector();
                assertSame(THROWN, assertThrows(RuntimeException.class,
                        () -> source.convert(jkc, data, 4, 15, false, (type, user) -> {
                            throw THROWN;
                        }, writer, null)));
                assertEquals(List.of(), writer.lengths);
                assertNotEquals(source.name(), 0, jkc.sts);
            }
        }
    }

    @Test
    public void callbackThatCallsBackInIsRefusedAndOtherObjectsCanBeReleased() throws Exception {
        Runnable[] calls = {jkc::_releaseJkc, () -> jkc.judgesBuffer(null, null, SJIS, 1, 0)};
        for (Runnable call : calls) {
            assertThrows(IllegalStateException.class,
                    () -> Source.STREAM.convert(jkc, SJIS, 4, 15, false, null, (data, length, user) -> {
                        Jkc other = new Jkc();
                        other._createJkc();
                        other._releaseJkc();
                        call.run();
                        return 0;
                    }, null));
        }
        assertEquals(4, jkc.judgesBuffer(null, null, SJIS, SJIS.length, 0));
    }

    /** Composed UTF-8 is pending up to 8191 bytes; a writer that answers -22 gets them again with a substitute. */
    @Test
    public void moreThanTheArrayHoldsArrivesInTwoPieces() throws Exception {
        byte[] text = ("か\u3099" + "a".repeat(8184) + "𠮷" + "end").getBytes(StandardCharsets.UTF_8);
        Collector writer = Collector.at(1, -22, null);
        jkc.setUtfmacTo(true);
        Source.BUFFER.convert(jkc, text, 15, 15, false, null, writer, null);
        assertEquals(List.of(8191, 8192, 1), writer.lengths);
        String once = "が" + "a".repeat(8184) + "𠮷";
        assertEquals(once + once + "\0?", writer.output.toString(StandardCharsets.UTF_8));

        List<Integer> lengths = new ArrayList<>();
        Jkc.Writer throwing = (data, length, user) -> {
            lengths.add(length);
            if (length == 8192) {
                throw THROWN;
            }
            return -22;
        };
        assertThrows(RuntimeException.class,
                () -> Source.BUFFER.convert(jkc, text, 15, 15, false, null, throwing, null));
        assertEquals("nothing is called after the exception", List.of(8191, 8192), lengths);
    }

    /** Every argument null or zero. */
    @Test
    public void nullSourcesAndObjectsWithoutContextAreRefused() throws Exception {
        Jkc released = new Jkc();
        released._createJkc();
        released._releaseJkc();
        int methods = 0;
        for (Method method : Jkc.class.getDeclaredMethods()) {
            if (!Modifier.isNative(method.getModifiers()) || method.getName().equals("_createJkc")) {
                continue;
            }
            ++methods;
            Object[] arguments = Arrays.stream(method.getParameterTypes())
                    .map(type -> Array.get(Array.newInstance(type, 1), 0)).toArray();
            for (Jkc without : new Jkc[] {new Jkc(), released}) {
                assertEquals(IllegalStateException.class, thrownBy(method, without, arguments));
            }
            if (!method.getName().equals("_releaseJkc")) {
                boolean reads = method.getName().matches("(judges|convert).*");
                assertEquals(reads ? NullPointerException.class : null, thrownBy(method, jkc, arguments));
            }
        }
        assertEquals(22, methods);
        assertEquals(0, jkc.sts);
    }

    private static Class<?> thrownBy(Method method, Jkc object, Object... arguments) throws Exception {
        try {
            method.invoke(object, arguments);
            return null;
        } catch (InvocationTargetException e) {
            return e.getCause().getClass();
        }
    }

    @Test
    public void pathsAreCutAtTheirLimit() throws Exception {
        byte[] name = Source.file(SJIS);
        byte[] longest = new byte[4095];
        Arrays.fill(longest, (byte) '/');
        System.arraycopy(name, 0, longest, longest.length - name.length, name.length);
        byte[] tooLong = Arrays.copyOf(longest, 5000);
        Arrays.fill(tooLong, 4095, 5000, (byte) 'x');
        for (byte[] path : new byte[][] {{}, "/nowhere".getBytes(), name, longest, tooLong}) {
            boolean opens = path.length >= name.length;
            assertEquals(path.length + " bytes", opens ? 4 : -5, jkc.judgesFile(null, null, path, 0));
            assertEquals(opens ? 4 : -5, jkc.sts);
            assertEquals(opens ? 0 : -5, jkc.convertFile(path, 4, 15, false, null, null, null));
            assertEquals(opens ? 0 : -5, jkc.sts);
            assertEquals("memory after a file", 4, jkc.judgesBuffer(null, null, SJIS, SJIS.length, 0));
        }
    }

    @Test
    public void lineTypeTakesItsFourValuesOnly() {
        for (int before : new int[] {0, 1, 2, 4}) {
            for (int value = -1; value <= 9; ++value) {
                jkc.setLtype(before);
                int expected = List.of(0, 1, 2, 4).contains(value) ? value : before;
                assertEquals(expected, jkc.setLtype(value));
                assertEquals(expected, jkc.getLtype());
            }
        }
    }

    @Test
    public void optionsAndRecordsOfTwoObjectsUsedInTurnStayApart() throws Exception {
        Jkc other = new Jkc();
        other._createJkc();
        jkc.setLtype(1);
        jkc.setSuppress(true);
        other.setUtfmacTo(true);
        byte[] text = "か\u3099\u1234\r\n".repeat(30).getBytes(StandardCharsets.UTF_8);
        for (int turn = 0; turn < 2; ++turn) {
            for (Jkc object : new Jkc[] {jkc, other}) {
                Collector writer = new Collector();
                Source.STREAM.convert(object, text, 15, 4, false, null, writer, null);
                String line = object == jkc ? "か\n" : "が?\r\n";
                assertEquals(line.repeat(30), writer.output.toString("windows-31j"));
            }
            // Where the pair is not composed, its mark has no equivalent either.
            assertEquals(List.of(60, 3, 325, 0x3099L, 0x1234L), record(jkc));
            assertEquals(List.of(30, 6, 325, 0x1234L, 0x1234L), record(other));
            assertEquals(List.of(true, false, true), List.of(jkc.isSuppress(), jkc.isUtfmacTo(), jkc.utfmacExists()));
            assertEquals(List.of(false, true), List.of(other.isSuppress(), other.isUtfmacTo()));
        }
        other._releaseJkc();
    }

    private static List<Number> record(Jkc jkc) {
        return List.of(jkc.getNoCharCount(), jkc.getFirstNoCharIndex(), jkc.getLastNoCharIndex(), jkc.getFirstNoChar(),
                jkc.getLastNoChar());
    }

    @Test
    public void eucCodesAreLookedUpInTheTablesOfTheLastConversion() throws Exception {
        long[] always = {0x41, 0x8EB1, 0xA4A2, 0xF4A6};
        long[] threeBytes = {0x8FB0A1, 0x8FEDE3};
        long[] never = {-1, Long.MIN_VALUE, 0, 0xFFFF, 0x8F0000, 0x1A4A2, 0x8FFFFF, Long.MAX_VALUE};
        byte[] euc = TEXT.getBytes(Charset.forName("EUC-JP"));
        for (int type : new int[] {5, 6}) {
            Source.BUFFER.convert(jkc, euc, type, 15, false, null, null, null);
            Arrays.stream(always).forEach(code -> assertEquals(true, jkc.isEucLong(code)));
            Arrays.stream(threeBytes).forEach(code -> assertEquals(type == 6, jkc.isEucLong(code)));
            Arrays.stream(never).forEach(code -> assertEquals(false, jkc.isEucLong(code)));
        }
    }

    @Test
    public void plainQuestionsAreAnswered() {
        assertEquals(2.2f, Jkc.nversion, 0);
        assertEquals(2.2f, jkc.getVersion(), 0);
        assertEquals(List.of(1, -1, 0), List.of(jkc.cmpBom(15, 16), jkc.cmpBom(12, 11), jkc.cmpBom(11, 14)));
    }
}
