import java.io.IOException;
import java.io.InputStream;
import java.io.OutputStream;
import java.nio.file.Files;
import java.nio.file.Path;
import kestro.jkc.CodeType;
import kestro.jkc.Conversion;
import kestro.jkc.LineType;
import kestro.jkc.Transcoder;

/** Converts a text in any Japanese encoding to UTF-8: {@code java -cp jkc.jar ConvertFile.java FROM TO}. */
public final class ConvertFile {
    private ConvertFile() {}

    public static void main(String[] files) throws IOException {
        Path from = Path.of(files[0]);
        Path to = Path.of(files[1]);
        try (Transcoder transcoder = new Transcoder().expect(CodeType.SJIS).lineType(LineType.LF);
                InputStream in = Files.newInputStream(from);
                OutputStream out = Files.newOutputStream(to)) {
            Conversion conversion = transcoder.convert(in, out, CodeType.UTF8);
            System.out.printf("%s is %s, %s is UTF8%n", from, conversion.source(), to);
            if (conversion.lostCount() > 0) {
                System.out.printf("%d characters are lost, the first at byte %d%n", conversion.lostCount(),
                        conversion.firstLostIndex());
            }
        }
    }
}
