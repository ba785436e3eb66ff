package kestro.jkc;

import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;

import java.io.File;
import java.nio.charset.Charset;
import java.nio.file.Files;
import java.util.ArrayList;
import java.util.List;
import java.util.Random;
import org.junit.Test;

/** Java and C, memory, stream and file: the same input has the same outcome in every way. */
public class SameOutcomeTest {
    @Test
    public void everyWayHasTheSameOutcome() throws Exception {
        List<String> command = new ArrayList<>(List.of(System.getProperty("jkc.reference")));
        List<String> expected = new ArrayList<>();
        for (byte[] input : inputs()) {
            command.add(new String(Source.file(input)));
            for (int from : new int[] {0, 5}) {
                List<String> lines = outcomes(Source.BUFFER, input, from);
                for (Source source : Source.values()) {
                    assertEquals(source.name(), lines, outcomes(source, input, from));
                }
                for (String source : List.of("b ", "s ", "f ")) {
                    lines.forEach(line -> expected.add(source + line));
                }
            }
        }
        Process reference = new ProcessBuilder(command).redirectErrorStream(true).start();
        assertArrayEquals(expected.toArray(), reference.inputReader().lines().toArray());
    }

    /** The samples, text over several blocks, and bytes that make no sense. */
    private static List<byte[]> inputs() throws Exception {
        byte[] noise = new byte[20000];
        new Random(1).nextBytes(noise);
        List<byte[]> inputs = new ArrayList<>(List.of(new byte[0], "plain".getBytes(), noise));
        for (File sample : new File(System.getProperty("jkc.samples")).listFiles()) {
            inputs.add(Files.readAllBytes(sample.toPath()));
        }
        String text = "x吾輩は猫である。\u1234名前は\r\nまだﾅｲか\u3099".repeat(400);
        for (String charset : List.of("windows-31j", "EUC-JP", "ISO-2022-JP", "UTF-8", "UTF-16")) {
            inputs.add(text.getBytes(Charset.forName(charset)));
        }
        return inputs;
    }

    /** In the words of reference.cpp. */
    private static List<String> outcomes(Source source, byte[] input, int from) throws Exception {
        Jkc jkc = new Jkc();
        jkc._createJkc();
        List<String> lines = new ArrayList<>();
        int[] type = new int[1];
        int[] line = new int[1];
        int judged = source.judge(jkc, type, line, input, from);
        lines.add(String.format("%d judged %d %d %d", from, judged, type[0], line[0]));
        for (int to = 1; to <= 16; ++to) {
            Collector writer = new Collector();
            int result = source.convert(jkc, input, from, to, true, null, writer, null);
            assertEquals(result, jkc.sts);
            lines.add(String.format("%d to %d: %d, %d lost, at %d %d, %d %d, %d bytes %x", from, to, result,
                    jkc.getNoCharCount(), jkc.getFirstNoCharIndex(), jkc.getLastNoCharIndex(), jkc.getFirstNoChar(),
                    jkc.getLastNoChar(), writer.output.size(), hash(writer.output.toByteArray())));
        }
        jkc._releaseJkc();
        return lines;
    }

    private static long hash(byte[] data) {
        long hash = 0xCBF29CE484222325L;
        for (byte b : data) {
            hash = (hash ^ (b & 0xFF)) * 0x100000001B3L;
        }
        return hash;
    }
}
