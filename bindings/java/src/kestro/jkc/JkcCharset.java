package kestro.jkc;

import java.nio.charset.Charset;
import java.nio.charset.CharsetDecoder;
import java.nio.charset.CharsetEncoder;
import java.util.List;
import java.util.concurrent.ArrayBlockingQueue;
import java.util.concurrent.BlockingQueue;

/** A code type as a charset. */
final class JkcCharset extends Charset {
    /** All of them. Those that Java lacks have the names by which they are known elsewhere. */
    static final List<JkcCharset> ALL = List.of(
            new JkcCharset(CodeType.JIS, "x-jkc-iso-2022-jp", "x-jkc-jis", "x-jkc-cp50221"),
            new JkcCharset(CodeType.JIS2004, "ISO-2022-JP-2004", "iso2022_jp_2004", "iso2022jp-2004",
                    "x-jkc-iso-2022-jp-2004", "x-jkc-jis2004"),
            new JkcCharset(CodeType.SJIS, "x-jkc-shift_jis", "x-jkc-sjis", "x-jkc-cp932", "x-jkc-windows-31j"),
            new JkcCharset(CodeType.EUC, "x-jkc-euc-jp", "x-jkc-euc"),
            new JkcCharset(CodeType.EUC_20932, "x-windows-20932", "windows-20932", "cp20932", "x-jkc-cp20932",
                    "x-jkc-euc_20932"),
            new JkcCharset(CodeType.EUC_51932, "CP51932", "csCP51932", "windows-51932", "x-windows-51932",
                    "x-jkc-cp51932", "x-jkc-euc_51932"),
            new JkcCharset(CodeType.EUC_MS, "eucJP-ms", "eucjp_ms", "euc-jp-ms", "eucJP-win", "x-eucjp-ms",
                    "x-jkc-eucjp-ms", "x-jkc-euc_ms"),
            new JkcCharset(CodeType.UTF16BE, "x-jkc-utf-16be", "x-jkc-utf16be"),
            new JkcCharset(CodeType.UTF16BE_BOM, "x-jkc-utf-16be-bom", "x-jkc-utf16be_bom"),
            new JkcCharset(CodeType.UTF16LE, "x-jkc-utf-16le", "x-jkc-utf16le"),
            new JkcCharset(CodeType.UTF16LE_BOM, "x-jkc-utf-16le-bom", "x-jkc-utf16le_bom"),
            new JkcCharset(CodeType.UTF8, "x-jkc-utf-8", "x-jkc-utf8"),
            new JkcCharset(CodeType.UTF8_BOM, "x-jkc-utf-8-bom", "x-jkc-utf8_bom"));

    /**
     * Native codecs that are not in use. A coder takes one for each text, since coders are never closed: so it is not the
     * collection of garbage that limits how much native memory short-lived ones keep.
     */
    private static final class Pool {
        private static final int MOST = 16;

        private final CodeType type;
        private final boolean encodes;
        private final BlockingQueue<Codec> idle = new ArrayBlockingQueue<>(MOST);

        Pool(CodeType type, boolean encodes) {
            this.type = type;
            this.encodes = encodes;
        }

        Codec take() {
            Codec codec = idle.poll();
            return codec != null ? codec : new Codec(type, encodes);
        }

        void giveBack(Codec codec) {
            codec.reset();
            if (!idle.offer(codec)) {
                codec.close();
            }
        }
    }

    private final CodeType type;
    private final Pool decoders;
    private final Pool encoders;

    private JkcCharset(CodeType type, String name, String... aliases) {
        super(name, aliases);
        this.type = type;
        decoders = new Pool(type, false);
        encoders = new Pool(type, true);
    }

    @Override
    public boolean contains(Charset other) {
        return type.isUnicode() || equals(other) || other.name().equals("US-ASCII");
    }

    @Override
    public CharsetDecoder newDecoder() {
        return new JkcDecoder(this);
    }

    @Override
    public CharsetEncoder newEncoder() {
        return new JkcEncoder(this);
    }

    Codec takeCodec(boolean encodes) {
        return (encodes ? encoders : decoders).take();
    }

    void giveBack(Codec codec, boolean encodes) {
        (encodes ? encoders : decoders).giveBack(codec);
    }

    float averageBytes() {
        return switch (type) {
            case UTF8, UTF8_BOM -> 3;
            default -> 2;
        };
    }

    /** Also of a text of one character, with all that comes in front and behind. */
    float mostBytes() {
        return switch (type) {
            case JIS, JIS2004 -> 9;
            case UTF8_BOM -> 6;
            case UTF16BE_BOM, UTF16LE_BOM -> 4;
            case EUC, EUC_20932, EUC_51932, EUC_MS, UTF8 -> 3;
            default -> 2;
        };
    }

    /** What an encoder writes for a character that is lost: that of Java's own charsets. */
    byte[] replacement() {
        return switch (type) {
            case UTF16BE, UTF16BE_BOM -> new byte[] {(byte) 0xFF, (byte) 0xFD};
            case UTF16LE, UTF16LE_BOM -> new byte[] {(byte) 0xFD, (byte) 0xFF};
            default -> new byte[] {'?'};
        };
    }
}
