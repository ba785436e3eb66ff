import java.nio.charset.Charset;
import java.util.Arrays;
import java.util.LinkedHashMap;
import java.util.Map;
import java.util.function.Supplier;
import kestro.jkc.CodeType;
import kestro.jkc.Transcoder;

/**
 * Speed beside that of Java's own charsets, in one run: java -cp jkc.jar:... Throughput. All ways of a row take turns, and
 * the median of their times counts.
 */
public final class Throughput {
    private static final String PROSE =
            "吾輩は猫である。名前はまだ無い。どこで生れたかとんと見当がつかぬ。何でも薄暗いじめじめした所で"
            + "ニャーニャー泣いていた事だけは記憶している。吾輩はここで始めて人間というものを見た。(第1話、Vol. 2)\r\n";
    private static final int ROUNDS = 41;
    private static final double ROUND_BYTES = 4e6;
    private static volatile Object sink;

    private static double megabytesPerSecond(long bytes, int repeats, long[] times) {
        Arrays.sort(times);
        return (double) bytes * repeats / times[times.length / 2] * 1e3;
    }

    private static void compare(String what, long bytes, Map<String, Supplier<?>> ways) {
        int repeats = (int) Math.max(1, ROUND_BYTES / bytes);
        long[][] times = new long[ways.size()][ROUNDS];
        for (int round = -ROUNDS / 2; round < ROUNDS; ++round) { // the first ones let the compiler learn
            int way = 0;
            for (Supplier<?> action : ways.values()) {
                long begin = System.nanoTime();
                for (int i = 0; i < repeats; ++i) {
                    sink = action.get();
                }
                times[way++][Math.max(round, 0)] = System.nanoTime() - begin;
            }
        }
        System.out.println(what);
        int way = 0;
        double base = 0;
        for (String name : ways.keySet()) {
            double speed = megabytesPerSecond(bytes, repeats, times[way++]);
            base = base == 0 ? speed : base;
            System.out.printf("  %-44s %7.0f MB/s %6.2f x%n", name, speed, speed / base);
        }
    }

    public static void main(String[] args) {
        for (int size : new int[] {1_000_000, 1000}) {
            for (Object[] row : new Object[][] {{"windows-31j", "x-jkc-shift_jis", CodeType.SJIS},
                         {"EUC-JP", "x-windows-20932", CodeType.EUC_20932}, {"UTF-8", "x-jkc-utf-8", CodeType.UTF8},
                         {"x-windows-iso2022jp", "x-jkc-jis", CodeType.JIS}}) {
                Charset theirs = Charset.forName((String) row[0]);
                Charset ours = Charset.forName((String) row[1]);
                CodeType type = (CodeType) row[2];
                String text = PROSE.repeat(size / PROSE.getBytes(theirs).length + 1);
                byte[] bytes = text.getBytes(theirs);
                Transcoder told = new Transcoder().from(type);
                Transcoder deciding = new Transcoder().expect(type);
                if (!text.equals(told.decode(bytes)) || !text.equals(new String(bytes, ours))) {
                    throw new AssertionError(row[0]);
                }
                Map<String, Supplier<?>> ways = new LinkedHashMap<>();
                ways.put("new String(bytes, " + theirs + ")", () -> new String(bytes, theirs));
                ways.put("Transcoder, told", () -> told.decode(bytes));
                ways.put("Transcoder, decided", () -> deciding.decode(bytes));
                ways.put("new String(bytes, " + ours + ")", () -> new String(bytes, ours));
                compare("decode " + theirs + ", " + bytes.length + " bytes", bytes.length, ways);
                ways.clear();
                ways.put("text.getBytes(" + theirs + ")", () -> text.getBytes(theirs));
                ways.put("Transcoder", () -> told.encode(text, type));
                ways.put("text.getBytes(" + ours + ")", () -> text.getBytes(ours));
                compare("encode " + theirs + ", " + bytes.length + " bytes", bytes.length, ways);
            }
        }
    }
}
