package kestro.jkc;

/** The native results that the Java side looks at. */
final class Status {
    static final int SUCCESS = 0;
    static final int NO_TYPE_FITS = -1;
    static final int EALLOC = -4;
    static final int EWRITE = -8;
    static final int EUEXPEOD = -22;

    private Status() {}
}
