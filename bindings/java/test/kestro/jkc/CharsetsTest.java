package kestro.jkc;

import static org.junit.Assert.*;

import java.io.ByteArrayOutputStream;
import java.nio.*;
import java.nio.charset.*;
import java.nio.file.*;
import java.util.*;
import java.util.concurrent.*;
import java.util.function.*;
import java.util.stream.*;
import org.junit.Test;

/** The charsets beside those of Java. */
public class CharsetsTest {
    private static final String TEXT = "Aあ亜。ｱー一\r\n猫\n";

    private static byte[] bytes(int... values) {
        byte[] bytes = new byte[values.length];
        for (int i = 0; i < values.length; ++i) {
            bytes[i] = (byte) values[i];
        }
        return bytes;
    }

    /** What comes of bytes alone, null where something is lost. */
    private static String decoded(CharsetDecoder decoder, byte[] bytes) {
        try {
            return decoder.decode(ByteBuffer.wrap(bytes)).toString();
        } catch (CharacterCodingException e) {
            return null;
        }
    }

    private static ByteBuffer encoded(CharsetEncoder encoder, int character) {
        try {
            return encoder.encode(CharBuffer.wrap(Character.toString(character)));
        } catch (CharacterCodingException e) {
            return null;
        }
    }

    private static boolean isJis(int b) {
        return b > 0x20 && b < 0x7F;
    }

    private static Stream<byte[]> allCodes(String frame) {
        IntStream pairs = IntStream.range(0, 0x10000);
        return switch (frame) {
            case "8F" -> pairs.mapToObj(code -> bytes(0x8F, code >> 8, code));
            case "JIS" -> pairs.filter(code -> isJis(code >> 8) && isJis(code & 0xFF))
                    .mapToObj(code -> bytes(0x1B, '$', 'B', code >> 8, code, 0x1B, '(', 'B'));
            case "UTF-8" -> pairs.mapToObj(code -> bytes(0xE0 | code >> 12, 0x80 | code >> 6 & 0x3F, 0x80 | code & 0x3F));
            case "1" -> IntStream.range(0, 0x100).mapToObj(code -> bytes(code));
            default -> pairs.mapToObj(code -> bytes(code >> 8, code));
        };
    }

    /** Every code and every character of the BMP, but for those that are named. */
    @Test
    public void mappingsAreThoseOfJavaButForWhatIsNamed() {
        record Row(String theirs, String ours, String frames, String otherCodes, String otherCharacters) {}
        for (Row row : List.of(
                new Row("windows-31j", "x-jkc-shift_jis", "1 2", "", "AB AF B5 B7 B8 BB 2016 2212 301C 3094"),
                new Row("EUC-JP", "x-windows-20932", "1 2 8F", "A1BD", "2014 2015 FF0D FF5E FFE0 FFE1 FFE2 FFE4"),
                new Row("x-windows-iso2022jp", "x-jkc-cp50221", "1 JIS", "", null),
                new Row("UTF-8", "x-jkc-utf-8", "1 2 UTF-8", "", ""), new Row("UTF-16BE", "x-jkc-utf-16be", "2", "", ""),
                new Row("UTF-16LE", "x-jkc-utf-16le", "2", "", ""))) {
            CharsetDecoder theirs = Charset.forName(row.theirs).newDecoder();
            CharsetDecoder ours = Charset.forName(row.ours).newDecoder();
            String codes = Stream.of(row.frames.split(" ")).flatMap(CharsetsTest::allCodes)
                    .filter(code -> !Objects.equals(decoded(theirs, code), decoded(ours, code)))
                    .map(code -> HexFormat.of().withUpperCase().formatHex(code)).collect(Collectors.joining(" "));
            assertEquals(row.ours, row.otherCodes, codes);
            CharsetEncoder theirWay = Charset.forName(row.theirs).newEncoder();
            CharsetEncoder ourWay = Charset.forName(row.ours).newEncoder();
            if (row.otherCharacters != null) {
                assertEquals(row.ours, row.otherCharacters, IntStream.range(0, 0x10000)
                        .filter(c -> !Objects.equals(encoded(theirWay, c), encoded(ourWay, c)))
                        .mapToObj(Integer::toHexString).map(String::toUpperCase).collect(Collectors.joining(" ")));
            }
        }
    }

    /**
     * What a decoder says, given so many bytes more and so much room at a time: its output and its errors, with each step
     * where that is asked for.
     */
    private static String steps(Charset charset, byte[] bytes, int more, int room, boolean hasSteps) {
        CharsetDecoder decoder = charset.newDecoder();
        ByteBuffer in = ByteBuffer.wrap(bytes);
        StringBuilder steps = new StringBuilder();
        for (int end = Math.min(more, bytes.length);;) {
            in.limit(end);
            CharBuffer out = CharBuffer.allocate(room);
            int before = in.position();
            CoderResult result = decoder.decode(in, out, end == bytes.length);
            steps.append(out.flip());
            if (result.isError()) {
                steps.append(' ').append(in.position()).append(result);
            } else if (hasSteps && in.position() > before) {
                steps.append(' ').append(in.position()).append('\n');
            }
            if (result.isError()) {
                in.position(in.position() + result.length());
            } else if (result.isUnderflow() && end == bytes.length) {
                return steps.toString();
            } else if (result.isUnderflow()) {
                end = Math.min(end + more, bytes.length);
            }
        }
    }

    @Test
    public void decodersStopWhereThoseOfJavaDo() {
        for (String[] pair : new String[][] {{"windows-31j", "x-jkc-shift_jis"}, {"EUC-JP", "x-windows-20932"},
                     {"UTF-8", "x-jkc-utf-8"}, {"UTF-16BE", "x-jkc-utf-16be"}, {"UTF-16LE", "x-jkc-utf-16le"},
                     {"x-windows-iso2022jp", "x-jkc-cp50221"}}) {
            Charset theirs = Charset.forName(pair[0]);
            Charset ours = Charset.forName(pair[1]);
            byte[] whole = ("aあ亜\n" + (pair[0].startsWith("UTF") ? "\uD840\uDC0B" : "") + "z").getBytes(theirs);
            List<byte[]> texts = new ArrayList<>(List.of(whole));
            texts.add(Arrays.copyOf(whole, whole.length + 1)); // an odd byte in UTF-16
            texts.add(Arrays.copyOf(whole, 2));
            // In the others Java takes what stands behind a cut character for the rest of it.
            boolean isAlike = pair[0].equals("windows-31j") || pair[0].equals("UTF-8");
            for (int i = 0; i < whole.length && isAlike; ++i) {
                byte[] damaged = whole.clone();
                damaged[i] = (byte) (pair[0].startsWith("UTF") ? 0xFF : ' ');
                texts.add(damaged);
            }
            for (byte[] text : texts) {
                for (int more = 1; more <= text.length; ++more) {
                    for (int room = 2; room <= 5; ++room) {
                        boolean hasSteps = text == whole && !pair[0].contains("2022"); // where an escape sequence may be one
                        assertEquals(pair[1] + HexFormat.of().formatHex(text) + " by " + more + " into " + room,
                                steps(theirs, text, more, room, hasSteps),
                                steps(ours, text, more, room, hasSteps));
                    }
                }
            }
        }
    }

    /** Each charset, whatever buffers and pieces it is given, as it reads and writes whole arrays. */
    @Test
    public void everyKindOfBufferServes() throws Exception {
        for (JkcCharset charset : JkcCharset.ALL) {
            boolean isUnicode = charset.contains(StandardCharsets.UTF_16);
            String text = TEXT + (isUnicode ? "\uD840\uDC0B\uFEFF" : "");
            byte[] bytes = text.getBytes(charset);
            assertEquals(charset.name(), text, new String(bytes, charset));
            byte[] padded = new byte[bytes.length + 5];
            System.arraycopy(bytes, 0, padded, 3, bytes.length);
            ByteBuffer part = ByteBuffer.wrap(padded, 3, bytes.length);
            ByteBuffer direct = ByteBuffer.allocateDirect(bytes.length + 3).put(new byte[3]).put(bytes).flip().position(3);
            List<ByteBuffer> ins =
                    List.of(part, part.slice(), part.asReadOnlyBuffer(), direct, direct.slice(), direct.asReadOnlyBuffer());
            List<IntFunction<CharBuffer>> outs = List.of(CharBuffer::allocate,
                    length -> CharBuffer.allocate(length + 2).position(2).slice(),
                    length -> ByteBuffer.allocateDirect(2 * length).order(ByteOrder.LITTLE_ENDIAN).asCharBuffer(),
                    length -> ByteBuffer.allocateDirect(2 * length).order(ByteOrder.BIG_ENDIAN).asCharBuffer(),
                    length -> ByteBuffer.allocate(2 * length).asCharBuffer());
            for (ByteBuffer in : ins) {
                for (IntFunction<CharBuffer> out : outs) {
                    for (int room : new int[] {2, 3, 100}) {
                        String read = read(charset.newDecoder(), in.duplicate(), () -> out.apply(room));
                        assertEquals(charset.name(), text, read);
                        CharBuffer chars = out.apply(100).put(text).flip();
                        for (CharBuffer source : List.of(chars, chars.asReadOnlyBuffer(), CharBuffer.wrap(text))) {
                            for (ByteBuffer to : List.of(ByteBuffer.allocate(room + 9), ByteBuffer.allocateDirect(room + 9))) {
                                CharsetEncoder encoder = charset.newEncoder();
                                assertArrayEquals(charset.name(), bytes, written(encoder, source.duplicate(), to));
                            }
                        }
                    }
                }
            }
        }
    }

    private static String read(CharsetDecoder decoder, ByteBuffer in, Supplier<CharBuffer> room) {
        StringBuilder text = new StringBuilder();
        for (CoderResult result = CoderResult.OVERFLOW; result.isOverflow();) {
            CharBuffer out = room.get();
            result = decoder.decode(in, out, true);
            assertFalse(result.isError());
            text.append(out.flip());
        }
        return text.toString();
    }

    private static byte[] written(CharsetEncoder encoder, CharBuffer in, ByteBuffer out) {
        ByteArrayOutputStream bytes = new ByteArrayOutputStream();
        for (boolean isEnding : new boolean[] {false, true}) {
            for (CoderResult result = CoderResult.OVERFLOW; result.isOverflow();) {
                result = isEnding ? encoder.flush(out.clear()) : encoder.encode(in, out.clear(), true);
                assertFalse(result.isError());
                for (out.flip(); out.hasRemaining();) {
                    bytes.write(out.get());
                }
            }
        }
        return bytes.toByteArray();
    }

    @Test
    public void whatIsLostIsReplacedOrLeftOutAsJavaDoes() {
        Charset theirs = Charset.forName("windows-31j");
        Charset ours = Charset.forName("x-jkc-cp932");
        for (byte[] bytes : List.of(bytes('a', 0x82), bytes(0x82, ' ', 'b'), bytes(0x83, 0x9F, 'c'),
                     bytes(0x80, 0xA0, 0xFF, 'x'))) {
            assertEquals(new String(bytes, theirs), new String(bytes, ours));
        }
        for (String text : List.of("a\u1234b", "\uD800", "\uDC00x", "\uD840\uDC0B!")) {
            assertArrayEquals(text.getBytes(theirs), text.getBytes(ours));
            assertEquals(theirs.newEncoder().canEncode(text), ours.newEncoder().canEncode(text));
        }
        Charset jis = Charset.forName("x-jkc-jis");
        assertEquals("あ?い", new String("あ\u1234い".getBytes(jis), jis));
        assertArrayEquals("か\u309A".getBytes(jis), "か?".getBytes(jis));
        assertTrue(jis.newEncoder().onUnmappableCharacter(CodingErrorAction.REPLACE).isLegalReplacement("〓".getBytes(jis)));
        assertFalse(ours.newEncoder().isLegalReplacement(bytes(0x82)));
    }

    @Test
    public void javaFindsThemByTheirNames() throws Exception {
        for (JkcCharset charset : JkcCharset.ALL) {
            assertSame(charset, Charset.forName(charset.name().toUpperCase()));
            assertTrue(Stream.concat(Stream.of(charset.name()), charset.aliases().stream())
                    .anyMatch(name -> name.startsWith("x-jkc-")));
            charset.aliases().forEach(alias -> assertSame(charset, Charset.forName(alias)));
            assertSame(charset, Charset.availableCharsets().get(charset.name()));
            assertTrue(charset.contains(charset) && charset.contains(StandardCharsets.US_ASCII));
        }
        Path file = Files.createTempFile("jkc", null);
        Files.writeString(file, TEXT, Charset.forName("eucJP-ms"));
        assertEquals(TEXT, Files.readString(file, Charset.forName("eucJP-ms")));
        assertEquals(TEXT.lines().toList(), Files.readAllLines(file, Charset.forName("cp51932")));
        Files.delete(file);
    }

    @Test
    public void threadsShareACharset() throws Exception {
        Charset charset = Charset.forName("x-jkc-jis");
        String text = TEXT.repeat(200);
        ExecutorService threads = Executors.newFixedThreadPool(8);
        List<Future<Boolean>> results = IntStream.range(0, 400)
                .mapToObj(i -> threads.submit(() -> text.equals(new String(text.getBytes(charset), charset)))).toList();
        for (Future<Boolean> result : results) {
            assertTrue(result.get());
        }
        threads.shutdown();
    }
}
