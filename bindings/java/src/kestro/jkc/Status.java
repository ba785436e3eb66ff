package kestro.jkc;

/** The native results that the Java side looks at, under the library's names. */
final class Status {
    static final int SUCCESS = 0;
    /** From a judgement: no code type fits. */
    static final int EOF = -1;
    static final int EALLOC = -4;
    static final int EWRITE = -8;
    static final int EUEXPEOD = -22;
    static final int ELOSS = -25;

    private Status() {}
}
