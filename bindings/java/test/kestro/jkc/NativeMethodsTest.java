package kestro.jkc;

import static org.junit.Assert.*;

import java.io.*;
import java.nio.charset.Charset;
import java.nio.file.*;
import java.util.*;
import java.util.concurrent.CompletableFuture;
import java.util.function.Consumer;
import java.util.stream.Stream;
import org.junit.Test;

/** What the native methods add to the library: arrays, callbacks, exceptions, objects. */
public class NativeMethodsTest {
    private static final String TEXT = "吾輩は猫である。\n名前はまだ無い。\r\n";
    private static final byte[] SJIS = in("windows-31j", TEXT);
    private static final byte[] LONG = in("windows-31j", TEXT.repeat(600));
    /** One kanji in Shift_JIS, another in EUC-JP. */
    private static final byte[] AMBIGUOUS = {(byte) 0xE0, (byte) 0xA1};
    private static final RuntimeException THROWN = new RuntimeException("thrown by a callback");

    /** The ways in which bytes reach the native methods. */
    private enum Source { BUFFER, STREAM, FILE }

    private final Jkc jkc = created();

    private static Jkc created() {
        Jkc jkc = new Jkc();
        assertEquals(0, jkc._createJkc());
        return jkc;
    }

    private static byte[] in(String charset, String text) {
        return text.getBytes(Charset.forName(charset));
    }

    /** Keeps the output; at its n-th call it answers or throws something. */
    private record Collector(List<String> pieces, int call, int answer) implements Jkc.Writer {
        Collector(int call, int answer) {
            this(new ArrayList<>(), call, answer);
        }

        @Override
        public int write(byte[] data, int length, Object thrown) {
            pieces.add(new String(data, 0, length, Charset.forName("ISO-8859-1")));
            if (pieces.size() == call && thrown != null) {
                throw (RuntimeException) thrown;
            }
            return pieces.size() == call ? answer : 0;
        }

        String output(String charset) {
            return new String(in("ISO-8859-1", String.join("", pieces)), Charset.forName(charset));
        }
    }

    /** Gives nothing at every third call, and a byte at a time before it gives all that is wanted. */
    private static InputStream stream(byte[] bytes) {
        return new ByteArrayInputStream(bytes) {
            private int calls;

            @Override
            public synchronized int read(byte[] data, int offset, int length) {
                return ++calls % 3 == 0 ? 0 : super.read(data, offset, calls < 10 ? 1 : length);
            }
        };
    }

    /** The name of a file that holds the bytes until the next call. */
    private static byte[] file(byte[] data) throws IOException {
        Path file = Path.of(System.getProperty("java.io.tmpdir"), "jkc" + ProcessHandle.current().pid());
        file.toFile().deleteOnExit();
        return Files.write(file, data).toString().getBytes();
    }

    private int judge(Source source, int[] type, int[] line, byte[] data, int preferred) throws IOException {
        return switch (source) {
            case BUFFER -> jkc.judgesBuffer(type, line, data, data.length, preferred);
            case STREAM -> jkc.judgesStream(type, line, stream(data), preferred);
            case FILE -> jkc.judgesFile(type, line, file(data), preferred);
        };
    }

    private int convert(Source source, byte[] data, int from, int to, boolean hint, Jkc.Observer observer,
            Jkc.Writer writer) throws IOException {
        return switch (source) {
            case BUFFER -> jkc.convertBuffer(data, data.length, from, to, hint, observer, writer, null);
            case STREAM -> jkc.convertStream(stream(data), from, to, hint, observer, writer, null);
            case FILE -> jkc.convertFile(file(data), from, to, hint, observer, writer, null);
        };
    }

    private int convert(byte[] data, int from, int to, Jkc.Observer observer, Jkc.Writer writer, Object user) {
        return jkc.convertBuffer(data, data.length, from, to, false, observer, writer, user);
    }

    @Test
    public void everySourceIsJudgedAndConvertedAlike() throws Exception {
        record Row(byte[] data, int expected, boolean hint, int judged, int lineEnds, int told, int to, String output,
                List<Number> lost) {}
        List<Number> none = List.of(0, -1, -1, -1L, -1L);
        for (Row row : List.of(new Row(new byte[0], 4, false, 0, 0, 0, 15, "", List.of(0, 0, 0, 0L, 0L)),
                new Row(LONG, 0, false, 4, 5, 4, 15, TEXT.repeat(600), none),
                new Row(AMBIGUOUS, 4, false, 4, 0, 4, 15, "爍", none),
                new Row(AMBIGUOUS, 5, false, 5, 0, 5, 15, "燹", none),
                new Row("ab\n".getBytes(), 5, false, 1, 1, 1, 16, "\uFEFFab\n", none),
                new Row("ab\n".getBytes(), 5, true, 1, 1, 5, 16, "\uFEFFab\n", none),
                new Row(in("UTF-8", "a\u1234か\u1235\r"), 15, false, 15, 2, 15, 4, "a?か?\r",
                        List.of(2, 1, 7, 0x1234L, 0x1235L)))) {
            for (Source source : Source.values()) {
                int[] type = {99, 99};
                int[] line = {99, 99};
                int[] told = {99};
                assertEquals(row.judged, judge(source, type, line, row.data, row.expected));
                assertEquals(row.judged, jkc.sts);
                assertArrayEquals(new int[] {row.judged, 99}, type);
                assertArrayEquals(new int[] {row.lineEnds, 99}, line);
                Collector writer = new Collector(0, 0);
                assertEquals(0, convert(source, row.data, row.expected, row.to, row.hint, (judged, user) -> {
                    told[0] = judged;
                    return 0;
                }, writer));
                assertEquals(row.told, told[0]);
                assertEquals(row.output, writer.output(row.to == 4 ? "windows-31j" : "UTF-8"));
                assertEquals(row.lost, List.of(jkc.getNoCharCount(), jkc.getFirstNoCharIndex(),
                        jkc.getLastNoCharIndex(), jkc.getFirstNoChar(), jkc.getLastNoChar()));
            }
        }
    }

    @Test
    public void arraysLengthsAndPathsOfAnySize() throws Exception {
        assertEquals("no room for answers", 4, jkc.judgesBuffer(new int[0], new int[0], SJIS, SJIS.length, 0));
        int[][] lengthsAndOutputs = {{Integer.MAX_VALUE, TEXT.length()}, {16, 8}, {0, 0}, {-1, 0}};
        for (int[] row : lengthsAndOutputs) {
            assertEquals(row[1] == 0 ? 0 : 4, jkc.judgesBuffer(null, null, SJIS, row[0], 0));
            Collector writer = new Collector(0, 0);
            assertEquals(0, jkc.convertBuffer(SJIS, row[0], 4, 15, false, null, writer, null));
            assertEquals(TEXT.substring(0, row[1]), writer.output("UTF-8"));
        }
        byte[] name = file(SJIS);
        byte[] longest = in("US-ASCII", "/".repeat(4095 - name.length) + new String(name));
        byte[] tooLong = in("US-ASCII", new String(longest) + "x".repeat(1000));
        for (byte[] path : new byte[][] {{}, "/nowhere".getBytes(), longest, tooLong}) {
            boolean opens = path.length >= longest.length;
            assertEquals(path.length + " bytes", opens ? 4 : -5, jkc.judgesFile(null, null, path, 0));
            assertEquals(opens ? 0 : -5, jkc.convertFile(path, 4, 15, false, null, null, null));
            assertEquals("memory after a file", 4, jkc.judgesBuffer(null, null, SJIS, SJIS.length, 0));
        }
    }

    /** Numbers and arrays at random: what is answered is what the bytes come to that are within them. */
    @Test
    public void anyArgumentsAreTakenAsFarAsTheyReach() throws Exception {
        Random random = new Random(1);
        for (int i = 0; i < 3000; ++i) {
            byte[] data = new byte[random.nextInt(i % 50 == 0 ? 20000 : 60)];
            random.nextBytes(data);
            if (random.nextBoolean()) {
                System.arraycopy(LONG, 0, data, 0, Math.min(LONG.length, data.length));
            }
            int length = random.nextInt(4) == 0 ? random.nextInt() : random.nextInt(data.length + 2);
            byte[] within = Arrays.copyOf(data, Math.max(0, Math.min(length, data.length)));
            int from = random.nextInt(8) == 0 ? random.nextInt() : random.nextInt(18);
            int to = random.nextInt(8) == 0 ? random.nextInt() : random.nextInt(18);
            int[] type = random.nextBoolean() ? null : new int[random.nextInt(3)];
            int[] line = random.nextBoolean() ? null : new int[random.nextInt(3)];
            jkc.setLtype(random.nextInt());
            jkc.setUtfmacTo(random.nextBoolean());
            assertEquals(judge(Source.STREAM, null, null, within, from),
                    jkc.judgesBuffer(type, line, data, length, from));
            int call = random.nextInt(4);
            int answer = random.nextInt(60) - 40;
            Collector expected = new Collector(call, answer);
            Collector found = new Collector(call, answer);
            assertEquals(convert(Source.STREAM, within, from, to, i % 2 == 0, null, expected),
                    jkc.convertBuffer(data, length, from, to, i % 2 == 0, null, found, null));
            assertEquals(expected.pieces, found.pieces);
            assertTrue("there is no such file", within.length == 0 || jkc.judgesFile(type, line, ("/./" + i
                    + new String(within, Charset.forName("ISO-8859-1")).replace('/', '.')).getBytes(), from) < 0);
        }
    }

    @Test
    public void streamThatFailsAtAnyCallIsAReadErrorWithNothingPending() {
        for (int row = 2; row < 8; ++row) {
            int failing = row / 2;
            boolean throwing = row % 2 == 0;
            int[] calls = new int[1];
            InputStream stream = new FilterInputStream(new ByteArrayInputStream(SJIS)) {
                @Override
                public int read(byte[] data, int offset, int length) throws IOException {
                    if (++calls[0] % failing != 0) {
                        return super.read(data, offset, 3);
                    } else if (throwing) {
                        throw new IOException();
                    }
                    return length + 1; // more than it was asked for
                }
            };
            assertEquals(-7, jkc.judgesStream(null, new int[1], stream, 0));
            assertEquals(-7, jkc.convertStream(stream, 4, 15, false, null, null, null));
            assertEquals(2 * failing, calls[0]);
        }
    }

    @Test
    public void callbackThatThrowsStopsTheConversionThere() {
        for (int call = 1; call <= 3; ++call) {
            Collector writer = new Collector(call, 0);
            assertSame(THROWN,
                    assertThrows(RuntimeException.class, () -> convert(LONG, 4, 2, null, writer, THROWN)));
            assertEquals(call, writer.pieces.size());
            assertEquals(-8, jkc.sts);
        }
        for (byte[] data : new byte[][] {SJIS, {}}) {
            Collector writer = new Collector(0, 0);
            assertSame(THROWN, assertThrows(RuntimeException.class, () -> convert(data, 4, 15, (type, user) -> {
                throw THROWN;
            }, writer, null)));
            assertEquals(List.of(), writer.pieces);
            assertNotEquals(0, jkc.sts);
        }
    }

    /**
     * Through other objects it gets what it would get alone, and the call that it interrupts goes on. All on another
     * thread than the one that created the object: each call has to use its own environment.
     */
    @Test
    public void callbackMayUseOtherObjectsButNotItsOwn() throws Exception {
        for (int depth : new int[] {0, 1, 2, 3}) {
            assertEquals(TEXT.repeat(600), CompletableFuture.supplyAsync(() -> convertedWithin(jkc, depth)).get());
            assertEquals(0, jkc.sts);
        }
        assertEquals("vetoed", 4, convert(SJIS, 4, 15, (type, user) -> 99, null, null));
    }

    private static String convertedWithin(Jkc jkc, int depth) {
        Collector collector = new Collector(0, 0);
        Runnable inside = () -> {
            assertThrows(IllegalStateException.class, jkc::_releaseJkc);
            assertThrows(IllegalStateException.class, () -> jkc.judgesBuffer(null, null, SJIS, 1, 0));
            if (depth > 0) {
                Jkc other = created();
                assertEquals(4, other.judgesBuffer(null, null, SJIS, SJIS.length, 0));
                assertEquals(TEXT.repeat(600), convertedWithin(other, depth - 1));
                other._releaseJkc();
            }
        };
        assertEquals(0, jkc.convertBuffer(LONG, LONG.length, 4, 15, false, (type, user) -> {
            inside.run();
            return user == collector ? 0 : 99;
        }, (data, length, user) -> {
            inside.run();
            return user == collector ? collector.write(data, length, null) : 99;
        }, collector));
        return collector.output("UTF-8");
    }

    /** Composed UTF-8 is pending up to 8191 bytes; a writer that answers -22 gets them again with a substitute. */
    @Test
    public void moreThanTheArrayHoldsArrivesInTwoPieces() {
        String composed = "が" + "a".repeat(8184) + "𠮷";
        byte[] text = in("UTF-8", "か\u3099" + composed.substring(1) + "end");
        jkc.setUtfmacTo(true);
        for (Object thrown : new Object[] {null, THROWN}) {
            Collector second = new Collector(2, 5);
            Jkc.Writer writer = (data, length, user) -> second.write(data, length, user) - (length == 8191 ? 22 : 0);
            try {
                convert(text, 15, 15, null, writer, thrown);
            } catch (RuntimeException e) {
                assertSame(thrown, e);
            }
            assertEquals("nothing is called after a refusal", composed + composed + "\0", second.output("UTF-8"));
        }
        Collector first = new Collector(1, -22);
        convert(text, 15, 15, null, first, null);
        assertEquals(List.of(8191, 8192, 1), first.pieces.stream().map(String::length).toList());
        assertEquals(composed + composed + "\0?", first.output("UTF-8"));
    }

    @Test
    public void nullSourcesAndObjectsWithoutContextAreRefused() {
        Jkc released = created();
        released._releaseJkc();
        List<Consumer<Jkc>> reading = List.of(object -> object.judgesBuffer(null, null, null, 0, 0),
                object -> object.judgesStream(null, null, null, 0), object -> object.judgesFile(null, null, null, 0),
                object -> object.convertBuffer(null, 0, 0, 0, false, null, null, null),
                object -> object.convertStream(null, 0, 0, false, null, null, null),
                object -> object.convertFile(null, 0, 0, false, null, null, null));
        reading.forEach(use -> assertThrows(NullPointerException.class, () -> use.accept(jkc)));
        Stream.concat(reading.stream(), Stream.of(Jkc::getLtype, Jkc::_releaseJkc)).forEach(use -> {
            assertThrows(IllegalStateException.class, () -> use.accept(new Jkc()));
            assertThrows(IllegalStateException.class, () -> use.accept(released));
        });
    }

    @Test
    public void optionsBelongToTheObjectAndLineTypeTakesItsFourValues() {
        Jkc other = created();
        int[][] lineTypesAndWhatHolds = {{1, 1}, {2, 2}, {3, 2}, {-1, 2}, {8, 2}, {0, 0}, {5, 0}, {4, 4}, {9, 4}};
        for (int[] row : lineTypesAndWhatHolds) {
            assertEquals(List.of(row[1], row[1]), List.of(jkc.setLtype(row[0]), jkc.getLtype()));
        }
        byte[] decomposed = in("UTF-8", "か\u3099");
        jkc.judgesBuffer(null, null, decomposed, decomposed.length, 15);
        jkc.setSuppress(true);
        other.setUtfmacTo(true);
        assertEquals(List.of(4, true, false, true),
                List.of(jkc.getLtype(), jkc.isSuppress(), jkc.isUtfmacTo(), jkc.utfmacExists()));
        assertEquals(List.of(0, false, true, false),
                List.of(other.getLtype(), other.isSuppress(), other.isUtfmacTo(), other.utfmacExists()));
        jkc.setSuppress(false);
        assertEquals(false, jkc.isSuppress());
    }

    @Test
    public void codesVersionAndComparison() {
        long[] always = {0x41, 0x8EB1, 0xA4A2, 0xF4A6};
        long[] threeBytes = {0x8FB0A1, 0x8FEDE3};
        long[] never = {-1, Long.MIN_VALUE, 0, 0xFFFF, 0x8F0000, 0x1A4A2, 0x0FB0A1, 0x8FFFFF, Long.MAX_VALUE};
        byte[] euc = in("EUC-JP", TEXT);
        for (int type : new int[] {5, 6}) {
            convert(euc, type, 15, null, null, null);
            Arrays.stream(always).forEach(code -> assertEquals(true, jkc.isEucLong(code)));
            Arrays.stream(threeBytes).forEach(code -> assertEquals(type == 6, jkc.isEucLong(code)));
            Arrays.stream(never).forEach(code -> assertEquals(false, jkc.isEucLong(code)));
        }
        assertEquals(List.of(2.2f, 2.2f), List.of(Jkc.nversion, jkc.getVersion()));
        assertEquals(List.of(1, -1, 0), List.of(jkc.cmpBom(15, 16), jkc.cmpBom(12, 11), jkc.cmpBom(11, 14)));
    }
}
