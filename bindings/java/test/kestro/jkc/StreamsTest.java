package kestro.jkc;

import static org.junit.Assert.*;

import java.io.*;
import java.nio.charset.*;
import java.nio.file.*;
import java.util.*;
import java.util.stream.*;
import org.junit.Test;

/** Texts that come in pieces, of any length, and what is lost of them. */
public class StreamsTest {
    private static final Charset CP932 = Charset.forName("windows-31j");
    private static final String TEXT = "吾輩は猫である。\n名前はまだ無い。\r\n";

    /** Gives so many bytes at a time, and knows whether it was closed. */
    private static final class Pieces extends FilterInputStream {
        private final int most;
        private boolean isClosed;

        Pieces(byte[] bytes, int most) {
            super(new ByteArrayInputStream(bytes));
            this.most = most;
        }

        @Override
        public int read(byte[] data, int offset, int length) throws IOException {
            return in.read(data, offset, Math.min(length, most));
        }

        @Override
        public void close() {
            isClosed = true;
        }
    }

    @Test
    public void lossesAreToldWithTheirPlaces() throws Exception {
        Random random = new Random(1);
        record Row(CodeType type, Charset charset, String front, byte[] bad) {}
        for (Row row : List.of(new Row(CodeType.SJIS, CP932, "", new byte[] {(byte) 0xFF}),
                     new Row(CodeType.EUC, Charset.forName("x-jkc-euc"), "", new byte[] {(byte) 0xFF}),
                     new Row(CodeType.JIS, Charset.forName("x-jkc-jis"), "", new byte[] {(byte) 0xFF}),
                     new Row(CodeType.UTF8_BOM, StandardCharsets.UTF_8, "\uFEFF",
                             new byte[] {(byte) 0xE3, (byte) 0x81}),
                     new Row(CodeType.UTF16BE, StandardCharsets.UTF_16BE, "\uFEFF", new byte[] {(byte) 0xDC, 0}),
                     new Row(CodeType.UTF16LE, StandardCharsets.UTF_16LE, "", new byte[] {0, (byte) 0xDC}))) {
            List<String> tokens = new ArrayList<>(
                    List.of("A", "あ亜", "ｱ", "\n", "\r\n", "\r", "", "", "とても長い行です。".repeat(20)));
            tokens.addAll(row.type.isUnicode() ? List.of("\uD840\uDC0B") : List.of());
            ByteArrayOutputStream text = new ByteArrayOutputStream();
            text.write(row.front.getBytes(row.charset));
            int begin = text.size();
            StringBuilder wanted = new StringBuilder();
            List<Loss> losses = new ArrayList<>();
            long line = 1;
            long column = 1;
            for (int i = 0; i < 2000; ++i) {
                String token = tokens.get(random.nextInt(tokens.size()));
                if (token.isEmpty()) { // and what does not go on with it
                    long code = IntStream.range(0, row.bad.length)
                                        .mapToLong(at -> row.bad[at] & 0xFF)
                                        .reduce(0, (a, b) -> a << 8 | b);
                    losses.add(new Loss(
                            Loss.Kind.ILL_FORMED, text.size() - begin, row.bad.length, code, -1, line, column));
                    text.write(row.bad);
                    wanted.append('\uFFFD');
                    token = "b";
                    ++column;
                }
                text.write(token.getBytes(row.charset));
                boolean isPair =
                        token.equals("\n") && wanted.length() > 0 && wanted.charAt(wanted.length() - 1) == '\r';
                wanted.append(token);
                boolean isLineEnd = token.matches("[\r\n]+");
                line += isLineEnd && !isPair ? 1 : 0;
                column = isLineEnd ? 1 : column + token.codePointCount(0, token.length());
            }
            byte[] bytes = text.toByteArray();
            Transcoder transcoder = new Transcoder().from(row.type).onLoss(LossPolicy.REPLACE);
            assertEquals(wanted.toString(), transcoder.decode(bytes));
            assertEquals(row.type.name(), losses, transcoder.losses());
            for (int most : new int[] {1, 7, 100, 70000}) {
                try (ConvertingReader reader = transcoder.reader(new Pieces(bytes, most))) {
                    StringWriter read = new StringWriter();
                    reader.transferTo(read);
                    assertEquals(wanted.toString(), read.toString());
                    assertEquals(row.type + " by " + most, losses, reader.losses());
                }
            }
            transcoder.keepLosses(3).decode(bytes);
            assertEquals(losses.subList(0, 3), transcoder.losses());
            assertEquals(losses.size(), transcoder.lastConversion().lostCount());
            assertEquals(losses.get(losses.size() - 1).offset(), transcoder.lastConversion().lastLostIndex());
            transcoder.close();
        }
    }

    @Test
    public void eachPolicyDoesWhatItSays() throws Exception {
        for (Object[] row : new Object[][] {{LossPolicy.CLASSIC, "a?"}, {LossPolicy.REPLACE, "a?"},
                     {LossPolicy.GETA, "a〓"}, {LossPolicy.OMIT, "a"}, {LossPolicy.ESCAPE, "a&#x20BB7;"}}) {
            Transcoder transcoder = new Transcoder().onLoss((LossPolicy) row[0]);
            assertEquals(row[1], new String(transcoder.encode("a\uD842\uDFB7", CodeType.SJIS), CP932));
            Loss loss = new Loss(Loss.Kind.UNMAPPABLE, 2, 4, 0xD842DFB7L, 0x20BB7, 1, 2);
            assertEquals(List.of(loss), transcoder.losses());
        }
        Transcoder stopping = new Transcoder().from(CodeType.SJIS).onLoss(LossPolicy.STOP);
        byte[] bytes = {'a', 'b', (byte) 0x82, (byte) 0x20};
        JkcException stopped = assertThrows(JkcException.class, () -> stopping.decode(bytes));
        assertEquals(2, stopped.loss().offset());
        ConvertingInputStream in = stopping.reading(new ByteArrayInputStream(bytes), CodeType.UTF8);
        assertArrayEquals(new byte[] {'a', 'b'}, in.readNBytes(2));
        for (int i = 0; i < 2; ++i) {
            assertSame(JkcException.class, assertThrows(IOException.class, in::read).getCause().getClass());
        }
        assertEquals("ok", stopping.decode("ok".getBytes()));
    }

    @Test
    public void streamsAndReadersBehaveAsThoseOfJava() throws Exception {
        byte[] bytes = TEXT.repeat(1000).getBytes(CP932);
        byte[] utf8 = TEXT.repeat(1000).getBytes(StandardCharsets.UTF_8);
        Path file = Files.write(Files.createTempFile("text", null), bytes);
        for (CodeType told : new CodeType[] {CodeType.EMPTY, CodeType.SJIS}) {
            Transcoder transcoder = new Transcoder().from(told);
            Pieces source = new Pieces(bytes, 1000);
            ConvertingInputStream in = transcoder.reading(source, CodeType.UTF8);
            assertEquals(0, in.read(new byte[5], 2, 0));
            assertThrows(IndexOutOfBoundsException.class, () -> in.read(new byte[5], 3, 3));
            assertFalse(in.markSupported());
            assertEquals(utf8[0] & 0xFF, in.read());
            in.skipNBytes(utf8.length - 100);
            assertArrayEquals(Arrays.copyOfRange(utf8, utf8.length - 99, utf8.length), in.readAllBytes());
            assertEquals(-1, in.read());
            assertEquals(CodeType.SJIS, in.conversion().source());
            in.close();
            in.close();
            assertTrue(source.isClosed);
            assertThrows(IOException.class, in::read);
            try (BufferedReader reader = new BufferedReader(transcoder.reader(file), 3)) {
                assertEquals(TEXT.repeat(1000).lines().toList(), reader.lines().toList());
            }
            ByteArrayOutputStream out = new ByteArrayOutputStream();
            source = new Pieces(bytes, 1);
            assertEquals(
                    new Conversion(CodeType.SJIS, 0, -1, -1, -1, -1), transcoder.convert(source, out, CodeType.UTF8));
            assertFalse(source.isClosed);
            transcoder.convert(file, out, CodeType.UTF8);
            assertArrayEquals(out.toByteArray(), (TEXT.repeat(2000)).getBytes(StandardCharsets.UTF_8));
            for (int length : new int[] {0, 1}) {
                assertEquals(length - 1,
                        Math.min(0, transcoder.reader(new ByteArrayInputStream("a".repeat(length).getBytes())).read()));
            }
            IOException thrown = new IOException();
            InputStream failing = new SequenceInputStream(new ByteArrayInputStream(bytes), new InputStream() {
                @Override
                public int read() throws IOException {
                    throw thrown;
                }
            });
            assertSame(thrown,
                    assertThrows(IOException.class, () -> transcoder.reader(failing).transferTo(Writer.nullWriter())));
        }
        Files.delete(file);
    }

    /** In less memory than the text has; the virtual machine gets 64 MB. */
    @Test
    public void textsMayBeLongerThanTheMemory() throws Exception {
        byte[] piece = TEXT.repeat(1000).getBytes(CP932);
        int times = 1600;
        for (CodeType told : new CodeType[] {CodeType.EMPTY, CodeType.SJIS}) {
            InputStream in = new InputStream() {
                private int left = times;

                @Override
                public int read() {
                    throw new UnsupportedOperationException();
                }

                @Override
                public int read(byte[] data, int offset, int length) {
                    System.arraycopy(piece, 0, data, offset, piece.length);
                    return left-- > 0 ? piece.length : -1;
                }
            };
            long[] written = {0};
            OutputStream out = new OutputStream() {
                @Override
                public void write(int b) {
                    ++written[0];
                }

                @Override
                public void write(byte[] data, int offset, int length) {
                    written[0] += length;
                }
            };
            Set<Path> before = temporaryFiles();
            new Transcoder().from(told).convert(in, out, CodeType.UTF8);
            assertEquals((long) times * TEXT.repeat(1000).getBytes(StandardCharsets.UTF_8).length, written[0]);
            assertEquals(before, temporaryFiles());
        }
    }

    private static Set<Path> temporaryFiles() throws IOException {
        try (Stream<Path> files = Files.list(Path.of(System.getProperty("java.io.tmpdir")))) {
            return files.filter(file -> file.getFileName().toString().matches("jkc.*[.]tmp"))
                    .collect(Collectors.toSet());
        }
    }

    /** Codes that are not written back, and a short text that only the decision knows. */
    @Test
    public void whatOnlyTheDecisionKnowsIsRead() {
        Transcoder transcoder = new Transcoder();
        byte[] nec = {(byte) 0xEE, (byte) 0xE0, (byte) 0x82, (byte) 0xB3, (byte) 0x82, (byte) 0xF1};
        assertEquals(new String(nec, CP932), transcoder.expect(CodeType.SJIS).decode(nec));
        assertEquals(0, transcoder.lastConversion().lostCount());
        assertEquals(
                "\uFEFFa", transcoder.from(CodeType.UTF8).decode("\uFEFF\uFEFFa".getBytes(StandardCharsets.UTF_8)));
        assertArrayEquals("\uFEFFa".getBytes(StandardCharsets.UTF_8), transcoder.encode("\uFEFFa", CodeType.UTF8));
    }
}
