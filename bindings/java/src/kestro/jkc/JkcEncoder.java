package kestro.jkc;

import java.nio.ByteBuffer;
import java.nio.CharBuffer;
import java.nio.charset.CharsetEncoder;
import java.nio.charset.CoderResult;
import java.util.Arrays;

/** The encoder of a {@link JkcCharset}. */
final class JkcEncoder extends CharsetEncoder {
    private Codec codec;

    JkcEncoder(JkcCharset charset) {
        super(charset, charset.averageBytes(), charset.mostBytes(), charset.replacement());
    }

    /** Also asked by the constructor above: the usual one is known without a decoder. */
    @Override
    public boolean isLegalReplacement(byte[] bytes) {
        return Arrays.equals(bytes, ((JkcCharset) charset()).replacement()) || super.isLegalReplacement(bytes);
    }

    @Override
    protected CoderResult encodeLoop(CharBuffer in, ByteBuffer out) {
        if (codec == null) {
            codec = ((JkcCharset) charset()).takeCodec(true);
        }
        return CodecBuffers.run(codec, in, out);
    }

    @Override
    protected CoderResult implFlush(ByteBuffer out) {
        CoderResult result = codec == null ? CoderResult.UNDERFLOW : CodecBuffers.flush(codec, out);
        if (result.isUnderflow()) {
            implReset();
        }
        return result;
    }

    @Override
    protected void implReset() {
        Codec idle = codec;
        if (idle != null) {
            codec = null;
            ((JkcCharset) charset()).giveBack(idle, true);
        }
    }
}
