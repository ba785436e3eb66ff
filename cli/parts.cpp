#include "parts.h"

#include <algorithm>

#include "jkc/detector.h"
#include "objects.h"
#include "translate.h"

namespace jkc::cli {
namespace {

constexpr size_t kLongestLine = size_t{1} << 20;

// Encodings in which a line may be, as JKC_JUDGED_BIT()s.
constexpr int kAny = JKC_JUDGED_BIT(JKC_TYPE_JIS) | JKC_JUDGED_BIT(JKC_TYPE_SJIS) | JKC_JUDGED_BIT(JKC_TYPE_EUC) |
                     JKC_JUDGED_BIT(JKC_TYPE_UTF8);

// Of the variants of EUC-JP, the one that fits best stands for all.
int encoding_bit(int type) {
    const bool is_euc = type >= JKC_TYPE_EUC && type <= JKC_TYPE_EUC_MS;
    return JKC_JUDGED_BIT(is_euc ? static_cast<int>(JKC_TYPE_EUC) : type) & kAny;
}

int fitting(const JkcDetection &found) {
    switch (found.decision) {
    case JKC_TYPE_EMPTY:
    case JKC_TYPE_ASCII:
        return kAny;
    case JKC_TYPE_JIS:
    case JKC_TYPE_JIS2004:
        return JKC_JUDGED_BIT(JKC_TYPE_JIS);
    default:
        break;
    }
    int fits = found.utf8_first_error < 0 ? JKC_JUDGED_BIT(JKC_TYPE_UTF8) : 0;
    for (const JkcEvidence &evidence : found.evidence) {
        if (evidence.type != JKC_TYPE_UTF8 && evidence.ill_formed == 0) {
            fits |= encoding_bit(evidence.type);
        }
    }
    return fits;
}

// The part that is being gathered.
class Gathering {
public:
    void add(std::string_view line, int fits, bool ends_line) {
        if (part_.begin == part_.end) {
            part_.first_line = line_;
            fits_ = fits;
            jkc_detector_reset(detector_.get());
        }
        fits_ &= fits;
        part_.end += line.size();
        part_.last_line = line_;
        line_ += ends_line ? 1 : 0;
        jkc_detector_feed(detector_.get(), reinterpret_cast<const uint8_t *>(line.data()), line.size());
    }

    // Whether a line that fits these goes with the part.
    bool takes(int fits) const { return part_.begin == part_.end || (fits_ & fits) != 0 || (fits_ | fits) == 0; }

    void close(std::vector<Part> &parts) {
        if (part_.begin == part_.end) {
            return;
        }
        const JkcDetection found = finish(detector_);
        part_.type = fits_ == 0 ? static_cast<int>(JKC_DECISION_NONE) : found.decision;
        if (fits_ != 0 && found.decision < 0 && (fits_ & (fits_ - 1)) == 0) { // one alone is left
            for (const int type : {JKC_TYPE_JIS, JKC_TYPE_SJIS, JKC_TYPE_EUC, JKC_TYPE_UTF8}) {
                part_.type = fits_ == JKC_JUDGED_BIT(type) ? type : part_.type;
            }
        }
        parts.push_back(part_);
        part_.begin = part_.end;
    }

private:
    Detector detector_ = make_detector();
    Part part_{JKC_TYPE_EMPTY, 1, 1, 0, 0};
    int fits_ = kAny;
    uint64_t line_ = 1;
};

} // namespace

void for_each_line(const Source &source, const std::function<void(std::string_view line)> &take) {
    std::string bytes; // a line's begin
    source.read(0, source.length(), [&](const uint8_t *data, size_t length) {
        bytes.append(reinterpret_cast<const char *>(data), length);
        size_t begin = 0;
        for (;;) {
            // The last byte may be the CR of a CR LF.
            const size_t found = bytes.find_first_of("\r\n", begin);
            if (found == std::string::npos || (bytes[found] == '\r' && found + 1 == bytes.size())) {
                break;
            }
            const size_t end = found + (bytes.compare(found, 2, "\r\n") == 0 ? 2 : 1);
            take(std::string_view(bytes).substr(begin, end - begin));
            begin = end;
        }
        if (bytes.size() - begin > kLongestLine) {
            take(std::string_view(bytes).substr(begin));
            begin = bytes.size();
        }
        bytes.erase(0, begin);
        return true;
    });
    if (!bytes.empty()) {
        take(bytes);
    }
}

std::vector<Part> find_parts(const Source &source) {
    std::vector<Part> parts;
    Gathering gathering;
    const Detector detector = make_detector();
    for_each_line(source, [&](std::string_view line) {
        jkc_detector_reset(detector.get());
        jkc_detector_feed(detector.get(), reinterpret_cast<const uint8_t *>(line.data()), line.size());
        const int fits = fitting(finish(detector));
        if (!gathering.takes(fits)) {
            gathering.close(parts);
        }
        gathering.add(line, fits, line.back() == '\n' || line.back() == '\r');
    });
    gathering.close(parts);
    return parts;
}

std::string describe_lines(const Part &part) {
    const auto first = static_cast<unsigned long long>(part.first_line);
    return part.first_line == part.last_line
               ? format(tr("line %llu"), first)
               : format(tr("lines %llu to %llu"), first, static_cast<unsigned long long>(part.last_line));
}

std::string describe_parts(const std::vector<Part> &parts) {
    constexpr size_t kMost = 4;
    std::string told;
    for (size_t i = 0; i < std::min(parts.size(), kMost); ++i) {
        const bool ends = i == 0 && parts.size() > 1;
        told += (i == 0 ? "" : tr(", ")) +
                format(ends ? tr("%s up to line %llu") : tr("%s from line %llu"), jkc_decision_name(parts[i].type),
                       static_cast<unsigned long long>(ends ? parts[i].last_line : parts[i].first_line));
    }
    return told + (parts.size() > kMost ? tr(" and so on") : "");
}

} // namespace jkc::cli
