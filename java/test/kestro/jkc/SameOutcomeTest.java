package kestro.jkc;

import static org.junit.Assert.assertArrayEquals;
import static org.junit.Assert.assertEquals;

import java.io.File;
import java.io.IOException;
import java.nio.charset.Charset;
import java.nio.charset.StandardCharsets;
import java.nio.file.Files;
import java.nio.file.Path;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Random;
import org.junit.Test;

/** Java and C, memory, stream and file: the same input has the same outcome in every way. */
public class SameOutcomeTest {
    private static final CodeType[] EXPECTED = {CodeType.EMPTY, CodeType.SJIS, CodeType.EUC, CodeType.UTF8};
    private static final List<String> C_SOURCES = List.of("buffer", "stream", "file");

    @Test
    public void everyWayHasTheSameOutcome() throws IOException, InterruptedException {
        Path folder = Files.createTempDirectory("jkc");
        List<String> command = new ArrayList<>(List.of(System.getProperty("jkc.reference")));
        List<byte[]> inputs = inputs();
        for (byte[] input : inputs) {
            Path file = folder.resolve(Integer.toString(command.size()));
            Files.write(file, input);
            command.add(file.toString());
        }
        Path answers = folder.resolve("answers");
        assertEquals(0, new ProcessBuilder(command).redirectErrorStream(true).redirectOutput(answers.toFile()).start()
                .waitFor());
        List<String> reference = Files.readAllLines(answers);
        List<String> expected = new ArrayList<>();
        for (byte[] input : inputs) {
            for (CodeType type : EXPECTED) {
                List<String> lines = outcomes(Source.BUFFER, input, type.number());
                for (Source source : Source.values()) {
                    assertEquals(source.name(), lines, outcomes(source, input, type.number()));
                }
                for (String source : C_SOURCES) {
                    lines.forEach(line -> expected.add(source + " " + line));
                }
            }
        }
        assertArrayEquals(reference.toArray(), expected.toArray());
        for (File file : folder.toFile().listFiles()) {
            Files.delete(file.toPath());
        }
        Files.delete(folder);
    }

    /** The samples, each alone and over several blocks, and bytes that make no sense. */
    private static List<byte[]> inputs() throws IOException {
        List<byte[]> inputs = new ArrayList<>(List.of(new byte[0], "plain".getBytes()));
        File[] samples = new File(System.getProperty("jkc.samples")).listFiles();
        Arrays.sort(samples);
        for (File sample : samples) {
            inputs.add(Files.readAllBytes(sample.toPath()));
        }
        String text = "x吾輩は猫である。\u1234名前は\r\nまだﾅｲか\u3099";
        for (Charset charset : new Charset[] {Charset.forName("windows-31j"), Charset.forName("EUC-JP"),
                Charset.forName("ISO-2022-JP"), StandardCharsets.UTF_8, StandardCharsets.UTF_16}) {
            inputs.add(text.repeat(400).getBytes(charset));
        }
        byte[] noise = new byte[20000];
        new Random(1).nextBytes(noise);
        inputs.add(noise);
        return inputs;
    }

    /** In the words of reference.cpp. */
    private static List<String> outcomes(Source source, byte[] input, int expected) {
        Jkc jkc = new Jkc();
        jkc._createJkc();
        List<String> lines = new ArrayList<>();
        int[] type = new int[1];
        int[] line = new int[1];
        int judged = source.judge(jkc, type, line, input, expected);
        lines.add(String.format("%d judged %d %d %d %d", expected, judged, type[0], line[0], jkc.sts));
        for (int to = 1; to <= 16; ++to) {
            Collector writer = new Collector();
            int result = source.convert(jkc, input, expected, to, true, null, writer, null);
            lines.add(String.format("%d to %d: %d %d, %d lost, at %d %d, %d %d, %d bytes %x", expected, to, result,
                    jkc.sts, jkc.getNoCharCount(), jkc.getFirstNoCharIndex(), jkc.getLastNoCharIndex(),
                    jkc.getFirstNoChar(), jkc.getLastNoChar(), writer.output.size(),
                    hash(writer.output.toByteArray())));
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
