/** Tells which Japanese encoding a text is in, and converts it. */
module kestro.jkc {
    exports kestro.jkc;

    provides java.nio.charset.spi.CharsetProvider with kestro.jkc.JkcCharsetProvider;
}
