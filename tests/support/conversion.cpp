#include "support/conversion.h"

#include <algorithm>
#include <cinttypes>
#include <optional>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "judge/input/feature_scan.h"
#include "judge/judge.h"
#include "support/collecting_writer.h"
#include "support/encoded.h"
#include "support/exact_buffer.h"
#include "support/selection.h"
#include "support/test_stream.h"

namespace jkc::testing {

namespace {

// Lets a conversion take any bytes as any code type, so that broken and very short texts reach every converter.
std::optional<int> forced_type;

constexpr int kNotTold = -99;

int source_type(const Case &c) { return static_cast<int>(c.options.number("src")); }
int target_type(const Case &c) { return static_cast<int>(c.options.number("dst")); }

std::string mark_of(int type) {
    const bool marked = type == JKC_TYPE_UTF16BE_BOM || type == JKC_TYPE_UTF16LE_BOM || type == JKC_TYPE_UTF8_BOM;
    return marked ? encoded(U"\uFEFF", type) : "";
}

std::string letter_in(int type) { return type < JKC_TYPE_UTF16BE ? "a" : encoded(U"a", type); }

// Doubled and not one by one: texts of a whole block are made for each case, also in emulators.
std::string letters(int type, size_t count) {
    const std::string letter = letter_in(type);
    std::string all = count > 0 ? letter : "";
    while (all.size() < count * letter.size()) {
        all += all.substr(0, count * letter.size() - all.size());
    }
    return all;
}

Outcome expected_but_chunks(const Case &c) {
    Outcome o;
    o.status = static_cast<int32_t>(c.options.number("status"));
    for (const char *result : {"nochar", "jis", "euc"}) {
        if (c.options.has(result)) {
            o.summary.append(result).append("=").append(c.options.text(result)).append(" ");
        }
    }
    o.told = c.options.has("unobserved") ? kNotTold : static_cast<int>(c.options.number("told", source_type(c)));
    return o;
}

struct Session {
    CollectingWriter writer;
    JkcContext *ctx;
    const Options *options;
    int told = kNotTold;

    static int32_t write(const uint8_t *data, uint64_t length, void *self) {
        return CollectingWriter::write(data, length, &static_cast<Session *>(self)->writer);
    }
    static int32_t observe(int32_t code_type, void *self) {
        auto *session = static_cast<Session *>(self);
        session->told = code_type;
        session->ctx->srg_exists = session->options->has("srg");
        session->ctx->utfmac_exists = session->options->has("compose") || session->options->has("composable");
        return static_cast<int32_t>(session->options->number("veto"));
    }
};

std::string in_word(const JkcLoss &loss) {
    std::ostringstream out;
    out << "-iut"[loss.kind] << loss.offset << '+' << loss.length << ':' << std::hex << std::uppercase << loss.code;
    if (loss.code_point >= 0) {
        out << '=' << loss.code_point;
    }
    if (loss.line > 0) {
        out << std::dec << '@' << loss.line << '.' << loss.column;
    }
    out << ';';
    return out.str();
}

struct LossRecorder {
    std::vector<std::string> told;
    size_t answer_at = 0;
    int32_t answer = 0;

    static int32_t observe(const JkcLoss *loss, void *self) {
        auto *recorder = static_cast<LossRecorder *>(self);
        recorder->told.push_back(in_word(*loss));
        return recorder->told.size() == recorder->answer_at ? recorder->answer : 0;
    }
};

// What is to tell besides the output, as in a case's options; positions without the padding.
std::string summary_of(const JkcContext &c, int src, int dst, int64_t padding) {
    std::ostringstream out;
    const bool is_reset = (c.first_nochar_index & c.first_nochar & c.last_nochar_index & c.last_nochar) == -1;
    if (c.nochar_count > 0 || !is_reset) {
        out << "nochar=" << c.nochar_count << ',' << c.first_nochar_index - padding << std::hex << std::uppercase
            << ":0x" << c.first_nochar << std::dec << ',' << c.last_nochar_index - padding << std::hex << ":0x"
            << c.last_nochar << ' ';
    }
    out << (family_of(src) == Family::kJis ? "jis=" + jis_source(c) + " " : "")
        << (family_of(dst) == Family::kEuc ? "euc=" + euc_target(c) + " " : "");
    return out.str();
}

} // namespace

void PrintTo(const Outcome &o, std::ostream *out) {
    *out << "status=" << o.status << ' ' << o.summary << "told=" << o.told << " reusable=" << o.reusable;
    for (const std::string &chunk : o.chunks) {
        *out << "\n  " << show_bytes(chunk);
    }
}

Outcome expected_outcome(const Case &c) {
    if (c.output.find('/') == std::string::npos) {
        return expected_behind_padding(c, 0);
    }
    Outcome outcome = expected_but_chunks(c);
    std::istringstream chunks(c.output);
    for (std::string chunk; std::getline(chunks, chunk, '/');) {
        outcome.chunks.push_back(parse_bytes(chunk));
    }
    return outcome;
}

Outcome expected_behind_padding(const Case &c, size_t padding) {
    Outcome outcome = expected_but_chunks(c);
    const auto flush_above = static_cast<size_t>(c.options.number("flush", INT32_MAX));
    std::string pending;
    const auto flush = [&] {
        if (pending.size() > flush_above) {
            outcome.chunks.push_back(pending);
            pending.clear();
        }
    };
    const auto step = [&](const std::string &piece) {
        flush();
        pending += piece;
    };
    const std::vector<std::string> pieces = parse_pieces(c.output);
    const std::string mark = mark_of(target_type(c));
    const bool marked = !mark.empty() && !pieces.empty() && pieces[0] == mark;
    if (marked) {
        step(mark);
    }
    for (const size_t unit = letter_in(target_type(c)).size(); padding > 0;) {
        flush();
        const size_t count = std::min(padding, (flush_above - pending.size()) / unit + 1);
        pending += letters(target_type(c), count);
        padding -= count;
    }
    std::for_each(pieces.begin() + (marked ? 1 : 0), pieces.end(), step);
    if (!pending.empty()) {
        outcome.chunks.push_back(pending);
    }
    return outcome;
}

std::string padded(const Case &c, int64_t padding) {
    std::string input = c.options.has("judged") ? mark_of(source_type(c)) : "";
    return input + letters(source_type(c), static_cast<size_t>(padding)) + c.input;
}

CollectingWriter answering_writer(const Options &o) {
    CollectingWriter writer;
    writer.answer_at = static_cast<size_t>(o.number("answer_at"));
    writer.answer = static_cast<int32_t>(o.number("answer"));
    return writer;
}

Outcome convert(const Case &c, Way way, int64_t padding) {
    const Options &o = c.options;
    const int src = source_type(c);
    const int dst = target_type(c);
    const bool judged = o.has("judged");
    const std::string input = padded(c, padding);
    forced_type = judged ? std::nullopt : std::optional(src);
    JkcContext *ctx = create_jkc();
    ctx->mode = static_cast<uint32_t>(o.number("eol"));
    ctx->suppress = static_cast<uint8_t>(o.number("suppress"));
    ctx->utfmac_to = o.has("compose") || o.has("composing");
    Session session{answering_writer(o), ctx, &o};
    const JkcWriter writer = o.has("no_writer") ? nullptr : Session::write;
    const JkcObserver observer = o.has("unobserved") ? nullptr : Session::observe;
    const bool hint = !o.has("no_hint");

    Outcome outcome;
    const ExactBuffer buffer(input);
    CutReader reader(input, 977);
    if (way == Way::kReader) {
        ctx->reader = &reader;
        ctx->mode |= JKC_MODE_READER; // which the entry point leaves in place
    }
    if (way == Way::kFile) {
        outcome.status = jkc_convert_file(ctx, text_file(input).c_str(), src, dst, hint, observer, writer, &session);
    } else if (way == Way::kStream) {
        TestStream stream(input);
        outcome.status = jkc_convert_stream(ctx, stream.file(), src, dst, hint, observer, writer, &session);
    } else {
        outcome.status =
            jkc_convert_buffer(ctx, buffer.data(), buffer.size(), src, dst, hint, observer, writer, &session);
    }
    forced_type.reset();
    outcome.chunks = session.writer.pieces;
    outcome.summary = summary_of(*ctx, src, dst, padding * static_cast<int64_t>(letter_in(src).size()));
    outcome.told = session.told;
    outcome.reusable = ctx->sts == outcome.status && ctx->blocks->data == nullptr && (ctx->mode & JKC_MODE_SOURCE) == 0;
    release_jkc(ctx);
    return outcome;
}

bool can_be_fed(const Case &c) {
    const auto is_type = [](int type) { return family_of(type) != Family::kNone; };
    const int64_t eol = c.options.number("eol");
    return is_type(source_type(c)) && is_type(target_type(c)) && (eol & (eol - 1)) == 0 && !c.options.has("judged") &&
           !c.options.has("veto") && !c.options.has("no_writer");
}

Outcome convert_fed(const Case &c, size_t piece, bool into_buffers, int64_t padding) {
    JkcConverterOptions options = {};
    options.size = sizeof options;
    options.line_type = static_cast<uint32_t>(c.options.number("eol"));
    options.suppress = static_cast<uint8_t>(c.options.number("suppress"));
    options.compose = c.options.has("compose");
    options.jis_2004 = c.options.has("srg");
    options.one_code_each = !c.options.has("all_codes");
    options.on_loss = static_cast<uint8_t>(c.options.number("on_loss"));
    options.geta = c.options.has("geta");
    options.places = c.options.has("places");
    LossRecorder recorder;
    recorder.answer_at = static_cast<size_t>(c.options.number("observed_at"));
    recorder.answer = static_cast<int32_t>(c.options.number("observed"));
    options.observer = LossRecorder::observe;
    options.observer_data = &recorder;
    std::minstd_rand random;
    const auto next_size = [&] { return piece != kRandomPieces ? piece : 1 + random() % 24; };
    JkcConverter *converter = nullptr;
    EXPECT_EQ(jkc_converter_create(&converter, source_type(c), target_type(c), &options), JKC_SUCCESS);
    std::string input = padded(c, padding);
    const Bom bom = bom_of(family_of(source_type(c)));
    const std::string front(reinterpret_cast<const char *>(bom.bytes), bom.length);
    // What adds a BOM takes one off itself.
    if (bom.length > 0 && input.starts_with(front) && jkc_cmp_bom(source_type(c), target_type(c)) != 1) {
        input.insert(0, front); // one is taken off, as by the judgement
    }
    CollectingWriter writer = answering_writer(c.options);
    Outcome outcome;
    size_t size = next_size();
    for (size_t at = 0; at <= input.size() && outcome.status == JKC_SUCCESS; at += size, size = next_size()) {
        const ExactBuffer part(input.substr(at, size));
        const bool last = at + size > input.size();
        if (!into_buffers) {
            outcome.status = jkc_converter_feed(converter, part.data(), part.size(), CollectingWriter::write, &writer);
            continue;
        }
        const uint8_t *in = part.data();
        size_t left = part.size();
        int32_t stop = JKC_STOP_OUTPUT;
        while (stop == JKC_STOP_OUTPUT) {
            std::string room(size, '#');
            auto *out = reinterpret_cast<uint8_t *>(room.data());
            size_t room_left = room.size();
            stop = jkc_converter_run(converter, &in, &left, &out, &room_left, last);
            outcome.chunks.push_back(room.substr(0, room.size() - room_left));
        }
        outcome.status = stop == JKC_STOP_INPUT ? static_cast<int32_t>(JKC_SUCCESS) : stop;
    }
    if (!into_buffers) {
        if (outcome.status == JKC_SUCCESS) {
            outcome.status = jkc_converter_finish(converter, CollectingWriter::write, &writer);
        }
        outcome.chunks = writer.pieces;
    }
    JkcConverterLosses losses = {};
    losses.size = sizeof losses;
    jkc_converter_losses(converter, &losses);
    JkcContext record = {};
    record.nochar_count = static_cast<uint32_t>(losses.nochar_count);
    record.first_nochar_index = losses.first_nochar_offset;
    record.last_nochar_index = losses.last_nochar_offset;
    record.first_nochar = losses.first_nochar;
    record.last_nochar = losses.last_nochar;
    outcome.summary = summary_of(record, 0, 0, padding * static_cast<int64_t>(letter_in(source_type(c)).size()));
    jkc_converter_release(converter);
    outcome = as_fed(outcome);
    EXPECT_EQ(losses.ill_formed + losses.unmappable + losses.truncated, recorder.told.size());
    if (!recorder.told.empty()) {
        EXPECT_EQ(in_word(losses.first) + in_word(losses.last), recorder.told.front() + recorder.told.back());
    }
    if (c.options.has("on_loss")) {
        outcome.summary = "losses=";
        for (const std::string &loss : recorder.told) {
            outcome.summary += loss;
        }
    }
    return outcome;
}

Outcome as_fed(Outcome outcome) {
    outcome.summary = outcome.summary.substr(0, outcome.summary.find_first_of("je")); // "jis=", "euc="
    outcome.told = kNotTold;
    outcome.reusable = true;
    return outcome;
}

std::string recoded(const std::string &text, int from, int to) {
    const size_t mark = text.starts_with(mark_of(from)) ? mark_of(from).size() : 0;
    const Case c = make_case("src=" + std::to_string(from) + " dst=" + std::to_string(to), text.substr(mark));
    return convert(c, Way::kBuffer).text();
}

} // namespace jkc::testing

// The linker wraps the driver's call of the judgement, by these names.
extern "C" {
int __real_jkc_judge_for_conversion(JkcContext *ctx, const jkc::WorkArea *area, int preferred, bool plain_is_preferred);

int __wrap_jkc_judge_for_conversion(JkcContext *ctx, const jkc::WorkArea *area, int preferred,
                                    bool plain_is_preferred) {
    using jkc::testing::forced_type;
    if (!forced_type) {
        return __real_jkc_judge_for_conversion(ctx, area, preferred, plain_is_preferred);
    }
    ctx->srg_exists = 0;
    ctx->utfmac_exists = 0;
    const int status = jkc::fill_buffer(ctx, *area->block(), JKC_TYPE_SJIS); // a type that is read and not looked at
    return status == JKC_SUCCESS ? *forced_type : status;
}
}
