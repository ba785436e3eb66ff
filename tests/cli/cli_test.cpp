// The program, run as a process: what it prints, its exit status, and what it does to files.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using Files = std::map<std::string, std::string>; // name to bytes
using namespace std::string_literals;

std::string read_file(const fs::path &path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

// A directory of files in which commands run, with what the last one printed.
class Sandbox {
public:
    explicit Sandbox(const Files &files) {
        std::string name = (fs::temp_directory_path() / "jkc-cli-XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) {
            throw fs::filesystem_error("mkdtemp", std::error_code(errno, std::generic_category()));
        }
        root_ = name;
        fs::create_directory(work());
        for (const auto &[file, bytes] : files) {
            std::ofstream(work() / file, std::ios::binary) << bytes;
        }
    }
    ~Sandbox() { fs::remove_all(root_); }
    Sandbox(const Sandbox &) = delete;
    Sandbox &operator=(const Sandbox &) = delete;

    fs::path work() const { return root_ / "work"; }

    // Runs shell commands, in which "jkc" is the program; answers their exit status.
    int run(const std::string &commands) {
        const std::string script = "cd '" + work().string() + "' && exec </dev/null >../out 2>../err && jkc() { '" +
                                   JKC_PROGRAM + "' \"$@\"; }\n" + commands;
        std::ofstream(root_ / "script") << script;
        const int status = std::system(("sh '" + (root_ / "script").string() + "'").c_str());
        out = read_file(root_ / "out");
        err = read_file(root_ / "err");
        for (size_t at; (at = err.find(work().string())) != std::string::npos;) {
            err.replace(at, work().string().size(), "DIR");
        }
        return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }

    Files files() const {
        Files found;
        for (const auto &entry : fs::directory_iterator(work())) {
            found[entry.path().filename()] = entry.is_regular_file() ? read_file(entry.path()) : "no regular file";
        }
        return found;
    }

    std::string out;
    std::string err;

private:
    fs::path root_;
};

std::string repeat(const std::string &text, int times) {
    std::string all;
    for (int i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

struct Case {
    std::string commands;
    int status;
    std::string out;
    std::string err;
    Files changed = {}; // files that are new or other than before; all others must be as they were
};

void check(const Files &before, const std::vector<Case> &cases) {
    for (const Case &c : cases) {
        SCOPED_TRACE(c.commands);
        Sandbox box(before);
        EXPECT_EQ(box.run(c.commands), c.status);
        EXPECT_EQ(box.out, c.out);
        EXPECT_EQ(box.err, c.err);
        Files after = c.changed;
        after.insert(before.begin(), before.end());
        EXPECT_EQ(box.files(), after);
    }
}

// One sentence in four code types.
const std::string kSjis =
    "\x82\xB1\x82\xEA\x82\xCD\x93\xFA\x96\x7B\x8C\xEA\x82\xCC\x95\xB6\x8F\xCD\x82\xC5\x82\xB7\x81\x42";
const std::string kEuc =
    "\xA4\xB3\xA4\xEC\xA4\xCF\xC6\xFC\xCB\xDC\xB8\xEC\xA4\xCE\xCA\xB8\xBE\xCF\xA4\xC7\xA4\xB9\xA1\xA3";
const std::string kUtf8 = "これは日本語の文章です。";
const std::string kJis = "\x1B$B$3$l$OF|K\\8l$NJ8>O$G$9!#\x1B(B";
const std::string kMark = "\xEF\xBB\xBF";
// 《\r\n and a\r: a bytewise look would see LF, CR and no CR LF.
const std::string kUtf16le = "\xFF\xFE\x0A\x30\x0D\x00\x0A\x00"s;
const std::string kUtf16be = "\xFE\xFF\x00\x61\x00\x0D"s;
const std::string kTie = "\xE4\xD8\xE5\xA5"; // also two kanji in EUC and in UTF-16
const std::string kWord = "eY";              // also a kanji in either byte order
// Symbols that SJIS lacks at bytes 36 and 75.
const std::string kLossy = kUtf8 + "☃" + kUtf8 + "♥\n";
const std::string kBinary = "\x80\xFF\xFE\x80\xFF\xFE\x80\xFF\xFE\x80\xFF\xFE\x80\xFF\xFE\x80\xFF\xFE\x81\xFF\xFD\xA0"s;

TEST(CliDetect, TellsCodeTypeAndLineEndsOfEachFile) {
    const Files files{{"sjis", kSjis + "\r\n"},
                      {"euc", kEuc + "\n" + kEuc + "\r\n"},
                      {"jis", kJis + "\r"},
                      {"utf8", kUtf8},
                      {"mark", kMark + "a\n"},
                      {"le", kUtf16le},
                      {"be", kUtf16be},
                      {"plain text", "Plain text, more than a word.\n"},
                      {"-dash", kUtf8 + "\n"},
                      {"empty", ""},
                      {"tie", kTie},
                      {"word", kWord},
                      {"binary", kBinary}};
    check(files, {{"jkc detect sjis euc jis utf8 mark le be 'plain text' empty", 0,
                   "sjis: SJIS, CRLF\neuc: EUC, LF+CRLF\njis: JIS(CP50221), CR\nutf8: UTF8, no line ends\n"
                   "mark: UTF8_BOM, LF\nle: UTF16LE_BOM, CRLF\nbe: UTF16BE_BOM, CR\nplain text: ASCII, LF\n"
                   "empty: Empty, no line ends\n",
                   ""},
                  {"jkc detect <sjis; cat le | jkc detect -", 0, "-: SJIS, CRLF\n-: UTF16LE_BOM, CRLF\n", ""},
                  {"jkc detect -- -dash ./-dash", 0, "-dash: UTF8, LF\n./-dash: UTF8, LF\n", ""},
                  // The sets of a judgement number the Unicode forms otherwise than the names' own sets do.
                  {"jkc detect tie", 1, "tie: undecided (SJIS, EUC, UTF16BE)\n", ""},
                  {"jkc detect word", 1, "word: undecided (ASCII, UTF16BE, UTF16LE)\n", ""},
                  {"jkc detect binary utf8", 1, "binary: unknown\nutf8: UTF8, no line ends\n", ""},
                  {"jkc detect missing . /proc/self/mem tie utf8", 3,
                   "tie: undecided (SJIS, EUC, UTF16BE)\nutf8: UTF8, no line ends\n",
                   "jkc: missing: No such file or directory\njkc: .: Is a directory\n"
                   "jkc: /proc/self/mem: Input/output error\n"},
                  {"jkc detect <&-", 3, "", "jkc: -: Bad file descriptor\n"},
                  {"jkc detect utf8 >&-", 3, "", "jkc: standard output: Bad file descriptor\n"},
                  {"jkc detect utf8 >/dev/full", 3, "", "jkc: standard output: No space left on device\n"}});
}

TEST(CliConvert, WritesEachTargetAndOption) {
    const Files files{{"sjis", kSjis + "\r\n"},
                      {"utf8", kUtf8 + "\n"},
                      {"lines", "a\r\nb\nc\r"},
                      {"empty", ""},
                      {"tie", kTie},
                      {"word", kWord},
                      {"decomposed", "か\u3099は\u309A"}};
    check(
        files,
        {{"jkc convert -t utf-8 sjis", 0, kUtf8 + "\r\n", ""},
         {"jkc convert -t Shift_JIS <utf8", 0, kSjis + "\n", ""},
         {"cat utf8 | jkc convert --to=cp51932 -", 0, kEuc + "\n", ""},
         {"jkc convert --to iso2022jp sjis --eol lf", 0, kJis + "\n", ""},
         {"jkc convert -t utf8 --eol keep lines", 0, "a\r\nb\nc\r", ""},
         {"jkc convert -t utf8 --eol lf lines", 0, "a\nb\nc\n", ""},
         {"jkc convert -t utf8 --eol crlf lines", 0, "a\r\nb\r\nc\r\n", ""},
         {"jkc convert -t utf8 --eol cr lines", 0, "a\rb\rc\r", ""},
         {"jkc convert -t sjis decomposed", 0, "\x82\xA9?\x82\xCD?",
          "jkc: decomposed: 2 characters without equivalent in SJIS: first U+3099 at byte 3, last U+309A at byte 9\n"},
         {"jkc convert -t sjis --compose decomposed", 0, "\x82\xAA\x82\xCF", ""},
         // Several inputs are joined, with one mark at the front, also when the first is empty.
         {"jkc convert -t utf-8-sig empty sjis utf8", 0, kMark + kUtf8 + "\r\n" + kUtf8 + "\n", ""},
         {"jkc convert -t utf-8-sig empty -o out", 0, "", "", {{"out", ""}}},
         {"jkc convert -t ascii utf8", 0, kSjis + "\n", "jkc: utf8: not plain ASCII, written as SJIS\n"},
         {"jkc convert -t utf8 -f sjis tie", 0, "蒭螂", ""},
         {"jkc convert -t utf8 -f us-ascii word; cat word | jkc convert -t utf8 -f jis", 0, "eYeY", ""},
         {"jkc convert -t utf8 -f utf-16 utf8", 0, kUtf8 + "\n",
          "jkc: utf8: read as UTF8, which its bytes show, not as UTF16LE_BOM\n"},
         {"jkc convert -t sjis -f euc-jp utf8 -q", 0, kSjis + "\n", ""},
         {"jkc convert -t utf8 -f utf-8-bom utf8; jkc convert -t utf8 -f euc-jp lines", 0, kUtf8 + "\n" + "a\r\nb\nc\r",
          ""}});
}

TEST(CliConvert, ReportsLostCharacters) {
    const Files files{{"lossy", kLossy},
                      {"invalid", std::string("\xFE").append(repeat(kUtf8, 20))},
                      {"legacy", repeat(kSjis + "\n", 20) + "\x85\x40"},
                      {"emoji", kUtf8 + "😅abc"},
                      {"good", kUtf8},
                      {"out", "old"}};
    const std::string report =
        "jkc: lossy: 2 characters without equivalent in SJIS: first U+2603 at byte 36, last U+2665 at byte 75\n";
    check(files, {{"jkc convert -t sjis lossy", 0, kSjis + "?" + kSjis + "?\n", report},
                  {"jkc convert -t sjis lossy -q --suppress", 0, kSjis + kSjis + "\n", ""},
                  {"jkc convert -t sjis emoji --suppress", 0, kSjis + "abc",
                   "jkc: emoji: 2 characters without equivalent in SJIS: first invalid bytes or a character beyond "
                   "U+FFFF at byte 36, last invalid bytes or a character beyond U+FFFF at byte 39\n"},
                  {"jkc convert -t sjis lossy -o out --strict", 1, "", report},
                  {"jkc convert -t sjis lossy --in-place --strict -q", 1, "", report},
                  {"jkc convert -t sjis good lossy -o out --strict", 1, "", report},
                  {"jkc convert -t utf16le --strict --suppress invalid >/dev/null", 1, "",
                   "jkc: invalid: 1 character without equivalent in UTF16LE: invalid bytes at byte 0\n"},
                  {"jkc convert -t sjis emoji", 0, kSjis + "??abc",
                   "jkc: emoji: 2 characters without equivalent in SJIS: first invalid bytes or a character beyond "
                   "U+FFFF at byte 36, last invalid bytes or a character beyond U+FFFF at byte 39\n"},
                  {"jkc convert -t utf8 legacy", 0, repeat(kUtf8 + "\n", 20) + "?",
                   "jkc: legacy: 1 character without equivalent in UTF8: 0x8540 at byte 500\n"}});
}

TEST(CliConvert, RewritesEachLineEndOnceWhereverItStands) {
    const std::map<std::string, std::string> beginnings{
        {"ascii", "a"}, {"utf8", kUtf8}, {"utf8bom", kMark + kUtf8}, {"sjis", kSjis}, {"euc", kEuc},
        {"jis", kJis},  {"utf16le", ""}, {"utf16lebom", "\xFF\xFE"}};
    const std::vector<std::pair<std::string, std::string>> conversions{
        {"ascii", "ascii"},           {"utf8", "utf8"},         {"utf8bom", "utf8bom"}, {"utf8", "utf8bom"},
        {"utf8bom", "utf8"},          {"sjis", "sjis"},         {"euc", "euc"},         {"jis", "jis"},
        {"utf16lebom", "utf16lebom"}, {"utf16lebom", "utf16le"}};
    for (const auto &[from, to] : conversions) {
        const size_t beginning = beginnings.at(from).size();
        // The library reads blocks of 8128 bytes, of which a mark may take some.
        for (size_t cr = 8125; cr <= 8130; ++cr) {
            const auto text = [&](const std::string &code, const std::string &line_end) {
                const size_t unit = code.substr(0, 5) == "utf16" ? 2 : 1;
                std::string bytes = beginnings.at(code);
                const std::string spaces((cr - beginning) / unit, ' ');
                for (const char c : spaces + line_end + line_end + "b" + line_end) {
                    bytes += c;
                    bytes.append(unit - 1, '\0');
                }
                return bytes;
            };
            check({{"text", text(from, "\r\n")}},
                  {{"for end in lf cr crlf; do jkc convert -t " + to + " --eol $end text; done", 0,
                    text(to, "\n") + text(to, "\r") + text(to, "\r\n"), ""}});
        }
    }
    // A CR at the end waits for nothing more.
    check({{"be", kUtf16be}, {"cr", "a\r\n\r"}},
          {{"jkc convert -t utf16be-bom --eol crlf be", 0, kUtf16be + "\0\n"s, ""},
           {"jkc convert -t utf8 --eol lf cr cr; jkc detect cr", 0, "a\n\na\n\ncr: ASCII, CR+CRLF\n", ""}});
}

TEST(Cli, TakesWellFormedUtf8ForUtf8) {
    check({{"short", "文\n"},
           {"emoji", "😅"},
           {"surrogate", "\xED\xA0\x80\n"},
           {"long", "\xF0\x82\x82\xAC\n"},
           {"cut", "文\xE6\x96"},
           {"two", "éééé\n"}},
          {{"jkc detect short emoji; jkc convert -t utf8 short emoji; jkc convert -t sjis short; jkc lines short", 0,
            "short: UTF8, LF\nemoji: UTF8, no line ends\n文\n😅\x95\xB6\n     1      1  文\n", ""},
           {"jkc convert -t utf8bom -f utf8bom short; jkc convert -t utf8 -f sjis short", 0, kMark + "文\n文\n",
            "jkc: short: read as UTF8, which its bytes show, not as SJIS\n"},
           {"jkc detect surrogate long cut two", 1,
            "surrogate: unknown\nlong: SJIS, LF\ncut: unknown\ntwo: undecided (EUC, UTF8)\n", ""}});
}

TEST(Cli, TakesControlBytesForASignOfBinaries) {
    const Files files{{"nul", kSjis + "a\0b\n"s},
                      {"mark", kMark + kUtf8 + "\x01\n"},
                      {"jis", kJis + "\x7F\x1C\n"},
                      {"tie", "abc\0def\n"s},
                      {"middle", "plain\x1Atext, and more\n"},
                      {"dos", kSjis + "\r\n\x1A\x1A"},
                      {"unicode", kUtf16be + "\0\0\0\x01"s},
                      {"text", kUtf8 + "\a\b\t\n\v\f\r\x0E\x0F\x1B[m\x1F"}};
    const std::string told = "jkc: nul: binary: byte 00 at byte 25\njkc: mark: binary: byte 01 at byte 36\n"
                             "jkc: jis: binary: byte 1C at byte 31\njkc: tie: binary: byte 00 at byte 3\n"
                             "jkc: middle: binary: byte 1A at byte 5\n";
    check(files,
          {{"jkc detect nul mark jis tie middle", 1,
            "nul: binary\nmark: binary\njis: binary\ntie: binary\nmiddle: binary\n", ""},
           {"jkc convert -t utf8 --in-place -q nul mark jis tie middle", 1, "", told},
           {"jkc convert -t utf8 nul mark jis tie middle -o out", 1, "", told},
           {"jkc lines nul", 1, "", "jkc: nul: binary: byte 00 at byte 25\n"},
           {"jkc detect dos unicode text", 0, "dos: SJIS, CRLF\nunicode: UTF16BE_BOM, CR\ntext: UTF8, LF+CR\n", ""}});
}

TEST(CliConvert, ReportsInvalidBytesThatTheLibraryPasses) {
    const std::string utf16 = kUtf16le + "\x3D\xD8\x00\xDE\x3D\xD8\x00\x30\x00\xDE\x0A\x00"s;
    std::string long_utf16 = "\xFF\xFE";
    for (int i = 0; i < 100; ++i) {
        long_utf16 += "\x53\x30\x8C\x30";
    }
    long_utf16 += utf16.substr(2);
    check({{"jis", repeat(kJis + "\n", 20) + "\xE9z\xA0\x1B$B0!\xB0\xA1\x1B(B\n"},
           {"shift", repeat(kJis + "\n", 20) + "\x1B(I1\n\x1B(B\x0E" + "1\x0F\n"},
           {"sjis", repeat(kSjis, 20) + "\x80\xED\x40\xB1" + "a\x81\n"},
           {"euc", repeat(kEuc, 100) + "\x81\x8E\xB1" + "a\x8E\xE0\n"},
           {"utf8", repeat(kUtf8, 20) + "\x80\n\xE3\x81"},
           {"utf16", long_utf16},
           {"odd", long_utf16 + "\xFF"}},
          {{"for to in jis utf8; do jkc convert -t $to jis; done >/dev/null", 0, "",
            "jkc: jis: 4 invalid bytes kept: first at byte 620, last at byte 629\n"
            "jkc: jis: 3 characters without equivalent in UTF8: first invalid bytes at byte 620, last 0xB0A1 at byte "
            "628\n"},
           {"for to in sjis utf8; do jkc convert -t $to shift; done >/dev/null", 0, "",
            "jkc: shift: 1 character without equivalent in SJIS: invalid bytes at byte 624\n"
            "jkc: shift: 2 characters without equivalent in UTF8: first invalid bytes at byte 624, last invalid bytes "
            "at byte 629\n"},
           {"jkc convert -t sjis sjis >/dev/null", 0, "",
            "jkc: sjis: 2 invalid bytes kept: first at byte 480, last at byte 485\n"},
           {"for to in euc utf8 jis; do jkc convert -t $to euc; done >/dev/null", 0, "",
            "jkc: euc: 3 invalid bytes kept: first at byte 2400, last at byte 2405\n"
            "jkc: euc: 2 characters without equivalent in UTF8: first invalid bytes at byte 2400, last 0x8EE0 at byte "
            "2404\n"
            "jkc: euc: 2 characters without equivalent in JIS(CP50221): first invalid bytes at byte 2400, last invalid "
            "bytes at byte 2404\n"},
           {"jkc convert -t utf8 utf8", 0, repeat(kUtf8, 20) + "\x80\n\xE3\x81",
            "jkc: utf8: 3 invalid bytes kept: first at byte 720, last at byte 723\n"},
           {"for to in utf16le utf16be utf8; do jkc convert -t $to utf16; done >/dev/null", 0, "",
            "jkc: utf16: 2 invalid bytes kept: first at byte 410, last at byte 414\n"
            "jkc: utf16: 2 characters without equivalent in UTF16BE: first invalid bytes at byte 410, last invalid "
            "bytes at byte 414\n"
            "jkc: utf16: 2 characters without equivalent in UTF8: first U+D83D at byte 410, last invalid bytes at byte "
            "414\n"},
           {"jkc convert -t utf16le odd >/dev/null", 0, "",
            "jkc: odd: 3 invalid bytes kept: first at byte 410, last at byte 418\n"},
           {"jkc convert -t sjis --strict jis -o out", 1, "",
            "jkc: jis: 3 characters without equivalent in SJIS: first invalid bytes at byte 620, last 0xB0A1 at byte "
            "628\n"},
           {"jkc convert -t utf8 --in-place --strict --eol crlf -q utf8", 1, "",
            "jkc: utf8: 3 invalid bytes kept: first at byte 720, last at byte 723\n"}});
}

TEST(CliConvert, KeepsTheRepertoireOfCp50221) {
    // The first four bytes of this ordinary text are a surrogate pair when read as UTF-16.
    const std::string text = repeat("\x90\xDA\x8A\xDD" + kSjis + "\xFB\xFC\x87\x40\n", 400);
    Sandbox box({{"text", text}});
    EXPECT_EQ(box.run("jkc convert -t ISO-2022-JP text"), 0);
    EXPECT_EQ(box.err, "");
    size_t found = 0;
    for (size_t at = 0; (at = box.out.find("\x1B$(D\x7C\x62\x1B$B\x2D\x21", at)) != std::string::npos; ++at) {
        ++found;
    }
    EXPECT_EQ(found, 400U);
}

TEST(CliConvert, CopiesLegacyTextThatLooksDecomposed) {
    // Read as UTF-16, the bytes hold か and U+3099.
    const std::string text = kSjis + "0K0\x99\x40";
    check({{"text", text}}, {{"jkc convert -t sjis --compose text", 0, text, ""},
                             {"jkc convert -t sjis --compose --in-place text", 0, "", ""}});
}

TEST(CliConvert, LeavesFilesAsTheyWereOnFailure) {
    const Files files{{"good", kUtf8},         {"tie", kTie},  {"binary", kBinary},
                      {"cut", kSjis + "\x82"}, {"out", "old"}, {"big", repeat("Plain text.\n", 10000)},
                      {"good.bak", "older"}};
    check(files,
          {{"jkc convert -t utf8 tie -o out", 1, "", "jkc: tie: undecided (SJIS, EUC, UTF16BE); -f CODE may decide\n"},
           {"jkc convert -t utf8 binary --in-place", 1, "", "jkc: binary: no code type fits\n"},
           {"jkc convert -t utf8 cut -o out", 3, "", "jkc: cut: the text ends inside a character\n"},
           {"jkc convert -t utf8 cut --in-place", 3, "", "jkc: cut: the text ends inside a character\n"},
           {"jkc convert -t sjis good missing -o out", 3, "", "jkc: missing: No such file or directory\n"},
           {"jkc convert -t sjis . -o out", 3, "", "jkc: .: Is a directory\n"},
           {"jkc convert -t sjis /proc/self/mem -o out", 3, "", "jkc: /proc/self/mem: Input/output error\n"},
           {"jkc convert -t sjis --in-place . missing /dev/null", 3, "",
            "jkc: .: Is a directory\njkc: missing: No such file or directory\njkc: /dev/null: not a regular file\n"
            "jkc: summary: 0 of 3 files converted\n"},
           {"jkc convert -t sjis good -o .", 3, "", "jkc: .: Is a directory\n"},
           {"jkc convert -t sjis good -o missing/out", 3, "",
            "jkc: missing/out: cannot create a temporary file beside it: No such file or directory\n"},
           {"jkc convert -t sjis good --in-place=.bak", 3, "", "jkc: DIR/good.bak: File exists\n"},
           {"jkc convert -t sjis good -o /dev/full", 3, "", "jkc: /dev/full: No space left on device\n"},
           {"jkc convert -t sjis good good >/dev/full", 3, "", "jkc: standard output: No space left on device\n"},
           {"{ jkc convert -t utf8 big; echo $? >&2; } | true", 0, "", "jkc: standard output: Broken pipe\n3\n"},
           {"(ulimit -f 1; jkc convert -t sjis big --in-place)", 3, "", "jkc: big: File too large\n"},
           {"(ulimit -f 1; jkc convert -t sjis big -o out)", 3, "", "jkc: out: File too large\n"}});
}

TEST(CliConvert, ReplacesFilesWhole) {
    const Files files{{"a b", kSjis}, {"-c", kSjis}, {"out", "old"}};
    check(files,
          {{"jkc convert -t utf8 --in-place=.bak 'a b' -- -c",
            0,
            "",
            "jkc: summary: 2 files converted\n",
            {{"a b", kUtf8}, {"a b.bak", kSjis}, {"-c", kUtf8}, {"-c.bak", kSjis}}},
           {"jkc convert -t utf8 'a b' -o out", 0, "", "", {{"out", kUtf8}}},
           {"jkc convert -t utf8 'a b' -o 'a b'", 0, "", "", {{"a b", kUtf8}}},
           {"jkc convert -t utf8 'a b' ./-c -o new", 0, "", "", {{"new", kUtf8 + kUtf8}}},
           {"jkc convert -t utf8 'a b' -o -; jkc convert -t utf8 'a b' -o /dev/null", 0, kUtf8, ""},
           // Written directly: the growing file that standard output is, not a new one in its place.
           {"{ printf x; jkc convert -t utf8 'a b' -o /dev/stdout; printf y; } >>out",
            0,
            "",
            "",
            {{"out", "oldx" + kUtf8 + "y"}}},
           {"ln -s out link; jkc convert -t utf8 'a b' -o link && [ -L link ] && rm link", 0, "", "", {{"out", kUtf8}}},
           {"ln -s nowhere link; jkc convert -t utf8 'a b' -o link; rm link", 0, "",
            "jkc: link: No such file or directory\n"},
           {"chmod 640 out; umask 027; jkc convert -t utf8 'a b' -o out; jkc convert -t utf8 'a b' -o new;"
            "umask 0; jkc convert -t utf8 'a b' -o out; stat -c %a out new",
            0,
            "640\n640\n",
            "",
            {{"out", kUtf8}, {"new", kUtf8}}}});
}

TEST(CliConvert, TellsWhatBecameOfManyFilesAlsoSideBySide) {
    const Files before{{"good", kUtf8}, {"lossy", kLossy}, {"plain", "abc"}, {"tie", kTie}};
    const Files changed{{"good", kSjis}, {"lossy", kSjis + "?" + kSjis + "?\n"}};
    const std::string told =
        "jkc: lossy: 2 characters without equivalent in SJIS: first U+2603 at byte 36, last U+2665 at byte 75\n"
        "jkc: missing: No such file or directory\njkc: summary: 3 of 5 files converted, 1 with lost characters\n"
        "jkc: tie: undecided (SJIS, EUC, UTF16BE); -f CODE may decide\n";
    for (const std::string jobs : {"1", "3", "1000"}) {
        // Sorted, since processes finish in any order.
        check(before, {{"n=" + jobs +
                            "; jkc convert -t sjis -j $n --in-place good lossy missing tie plain 2>.err\n"
                            "status=$?; sort .err >&2; rm .err; exit $status",
                        3, "", told, changed}});
    }
    check(before, {{"jkc convert -t sjis -j 2 -q --in-place good plain", 0, "", "", {{"good", kSjis}}}});
}

TEST(CliConvert, ShowsABarForLongWorkOnATerminalOnly) {
    Sandbox box({{"text", kSjis}});
    const std::string convert = "'" JKC_PROGRAM "' convert -t utf8 text ";
    // The pipes make the work long; script(1) makes the terminals, where the machine has any to give.
    box.run("script -qec true /dev/null >/dev/null 2>&1 || { printf none; exit; }\n"
            "for pipe in a b c; do mkfifo $pipe; timeout 60 sh -c \"{ sleep 1.2; cat text; } >$pipe\" & done\n"
            "script -qec \"" +
            convert +
            "a -o out.a\" /dev/null >shown &\n"
            "script -qec \"" +
            convert + "b -o out.b --no-progress\" /dev/null >refused &\n" + convert +
            "c -o out.c >none 2>&1 &\n"
            "wait; grep -c '#.*%, 1 of 2 files' shown; cat refused none out.?");
    if (box.out == "none") {
        GTEST_SKIP() << "there is no program script, or no terminal for it";
    }
    EXPECT_EQ(box.out, "1\n" + repeat(kUtf8, 6));
}

TEST(CliLines, NumbersLinesAndCountsCharacters) {
    const Files files{{"sjis", kSjis + "\r\n\r\nab\n"},
                      {"unended", "a\rb"},
                      {"empty", ""},
                      {"blank", "\n\n"},
                      {"mark", kMark + kUtf8},
                      {"cut", kSjis + "\n\n\x82"},
                      {"stray", repeat(kEuc, 20) + "\n\xFF\n"},
                      {"tie", kTie},
                      {"binary", kBinary}};
    const auto line = [](int number, const std::string &count, const std::string &text) {
        return "     " + std::to_string(number) + "     " + count + "  " + text + "\n";
    };
    const std::string rest = line(2, " 0", "") + line(3, " 2", "ab");
    const std::string unended = line(1, " 1", "a") + line(2, " 1", "b");
    std::string unended_be;
    for (const char c : unended) {
        unended_be += {'\0', c};
    }
    check(files, {{"jkc lines sjis", 0, line(1, "12", kUtf8) + rest, ""},
                  {"cat sjis | jkc lines -t shift_jis -", 0, line(1, "12", kSjis) + rest, ""},
                  {"jkc lines -t ascii <sjis", 0, line(1, "12", kSjis) + rest, ""},
                  {"jkc lines -t jis sjis", 0, line(1, "12", kJis) + rest, ""},
                  {"jkc lines -t utf8bom mark", 0, line(1, "12", kUtf8), ""},
                  {"jkc lines unended; jkc lines empty; jkc lines blank", 0,
                   unended + line(1, " 0", "") + line(2, " 0", ""), ""},
                  {"jkc lines -t utf16be unended", 0, unended_be, ""},
                  {"jkc lines -t euc -f euc tie", 0, line(1, " 2", kTie), ""},
                  {"jkc lines tie; jkc lines binary", 1, "",
                   "jkc: tie: undecided (SJIS, EUC, UTF16BE); -f CODE may decide\njkc: binary: no code type fits\n"},
                  // Both would be read for ever.
                  {"jkc lines -t sjis cut", 3, line(1, "12", kSjis), "jkc: cut: the text ends inside a character\n"},
                  {"jkc lines -t euc stray >/dev/null", 3, "", "jkc: stray: line 2: invalid bytes\n"},
                  {"jkc lines missing; jkc lines .", 3, "",
                   "jkc: missing: No such file or directory\njkc: .: Is a directory\n"},
                  {"jkc lines sjis >/dev/full", 3, "", "jkc: standard output: No space left on device\n"}});
}

TEST(CliConvert, LeavesNoTraceWhenInterrupted) {
    for (const std::string signal : {"HUP", "INT", "TERM"}) {
        // The shell would have a background command ignore INT; env gives it back its default.
        check({{"out", "old"}},
              {{"mkfifo pipe; env --default-signal=INT '" JKC_PROGRAM "' convert -t utf8 - -o out <pipe & exec 3>pipe\n"
                "while ! ls .jkc-* >/dev/null 2>&1; do sleep 0.01; done\n"
                "kill -" +
                    signal + " $!; { wait $!; } 2>&-; status=$?; rm pipe; [ $status -gt 128 ]",
                0, "", ""}});
    }
}

TEST(Cli, RefusesBadCommandLines) {
    check({{"a", "a"}},
          {{"jkc", 2, "", "jkc: no command (see 'jkc --help')\n"},
           {"jkc frobnicate", 2, "", "jkc: unknown command 'frobnicate' (see 'jkc --help')\n"},
           {"jkc detect --foo", 2, "", "jkc: unrecognized option '--foo'\n"},
           {"jkc convert a", 2, "", "jkc: convert needs the target: -t CODE\n"},
           {"jkc convert -t", 2, "", "jkc: option requires an argument -- 't'\n"},
           {"jkc convert -t Empty a", 2, "", "jkc: unknown code type 'Empty' ('jkc --list' shows the known ones)\n"},
           {"jkc convert -t dummy1 a", 2, "", "jkc: unknown code type 'dummy1' ('jkc --list' shows the known ones)\n"},
           {"jkc convert -f '' -t sjis a", 2, "", "jkc: unknown code type '' ('jkc --list' shows the known ones)\n"},
           {"jkc convert -t sjis --eol dos a", 2, "", "jkc: unknown line end 'dos' (keep, lf, crlf or cr)\n"},
           {"jkc convert -t sjis --in-place", 2, "", "jkc: --in-place needs files, not standard input\n"},
           {"jkc convert -t sjis --in-place a -", 2, "", "jkc: --in-place needs files, not standard input\n"},
           {"jkc convert -t sjis --in-place=x/y a", 2, "", "jkc: --in-place takes a suffix such as .bak\n"},
           {"jkc convert -t sjis --in-place -o b a", 2, "", "jkc: -o and --in-place exclude each other\n"},
           {"jkc convert -t sjis --in-place -j 0 a", 2, "", "jkc: --jobs takes a number from 1 to 1000\n"},
           {"jkc convert -t sjis --in-place -j 2x a", 2, "", "jkc: --jobs takes a number from 1 to 1000\n"},
           {"jkc convert -t sjis --jobs 2 a", 2, "",
            "jkc: --jobs needs --in-place, since joined output is written in order\n"},
           {"jkc lines a a", 2, "", "jkc: lines takes one file\n"},
           {"jkc lines -t jis2004 a", 2, "", "jkc: lines cannot be read in JIS2(ISO-2022)\n"}});
}

TEST(Cli, HelpFitsOnAScreenAndTheListNamesEveryType) {
    Sandbox box({});
    // 24 lines leave room for the prompt.
    EXPECT_EQ(
        box.run("for command in '' detect convert lines; do jkc $command --help | awk 'length > 80 || NR > 24'; done"),
        0);
    EXPECT_EQ(box.out, "");
    // Every name and alias of the list is taken by -t, whatever its case.
    EXPECT_EQ(
        box.run("for name in $(jkc --list | awk '/^[^ ]/ { print $1 } /^ / { print }'); do\n"
                "jkc convert -t \"$name\" && jkc convert -t $(echo \"$name\" | tr A-Z a-z | tr -d _-) || exit; done\n"
                "jkc --list | grep -c '^[^ ]'"),
        0);
    EXPECT_EQ(box.out, "14\n");
    EXPECT_EQ(box.run("jkc --version"), 0);
    EXPECT_EQ(box.out, "jkc 2.2.0 (library 2.2)\n");
}

} // namespace
