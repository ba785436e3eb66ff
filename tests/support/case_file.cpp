#include "support/case_file.h"

#include <cstdlib>
#include <fstream>
#include <numeric>
#include <sstream>

#include <gtest/gtest.h>

namespace jkc::testing {

namespace {

std::vector<std::string> split_fields(const std::string &line) {
    std::vector<std::string> fields;
    std::istringstream in(line);
    for (std::string field; std::getline(in, field, '|');) {
        const size_t first = field.find_first_not_of(' ');
        const size_t last = field.find_last_not_of(' ');
        fields.push_back(first == std::string::npos ? "" : field.substr(first, last - first + 1));
    }
    return fields;
}

std::vector<std::string> lines_of(const std::string &file) {
    std::vector<std::string> lines;
    std::ifstream in(JKC_TEST_DATA "/" + file);
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace

void Options::add(const std::string &words) {
    std::istringstream in(words);
    for (std::string word; in >> word;) {
        const size_t equals = word.find('=');
        values_[word.substr(0, equals)] = equals == std::string::npos ? "1" : word.substr(equals + 1);
    }
}

int64_t Options::number(const std::string &name, int64_t otherwise) const {
    return has(name) ? std::stoll(values_.at(name), nullptr, 0) : otherwise;
}

std::string Options::text(const std::string &name, const std::string &otherwise) const {
    return has(name) ? values_.at(name) : otherwise;
}

Case make_case(const std::string &options, const std::string &input) {
    Case c{"", {}, input, ""};
    c.options.add(options);
    return c;
}

std::vector<Case> read_cases(const std::string &file) {
    std::vector<Case> cases;
    Case head;
    size_t number = 0;
    for (const std::string &line : lines_of(file)) {
        const bool result = line.starts_with('>');
        if (!line.empty() && line[0] != '#') {
            std::vector<std::string> fields = split_fields(result ? line.substr(1) : line);
            fields.resize(3);
            if (result) {
                cases.push_back(head);
                cases.back().options.add(fields[0]);
                cases.back().output = fields[1];
                cases.back().line = number;
            } else {
                head = {fields[0], {}, parse_bytes(fields[2]), ""};
                head.options.add(fields[1]);
            }
        }
        number++;
    }
    EXPECT_FALSE(cases.empty()) << file;
    return cases;
}

void check_results(const std::string &file, const std::function<std::string(const Case &)> &result) {
    std::vector<std::string> lines = lines_of(file);
    for (const Case &c : read_cases(file)) {
        SCOPED_TRACE(file + ":" + std::to_string(c.line + 1) + ": " + c.name);
        const std::string answer = result(c);
        if (getenv("JKC_UPDATE") == nullptr) {
            EXPECT_EQ(c.output, answer);
        }
        lines[c.line] = lines[c.line].substr(0, lines[c.line].find('|') + 1) + (answer.empty() ? "" : " ") + answer;
    }
    if (getenv("JKC_UPDATE") != nullptr) {
        std::ofstream out(JKC_TEST_DATA "/" + file, std::ios::binary);
        for (const std::string &line : lines) {
            out << line << '\n';
        }
    }
}

std::string in_words(const std::vector<std::string> &words) {
    std::string all;
    for (size_t i = 0, next = 0; i < words.size(); i = next) {
        while (next < words.size() && words[next] == words[i]) {
            next++;
        }
        all.append(i > 0 ? " " : "").append(words[i]);
        if (next - i > 1) {
            all.append("*").append(std::to_string(next - i));
        }
    }
    return all;
}

std::vector<std::string> parse_pieces(const std::string &hex) {
    std::vector<std::string> pieces;
    std::istringstream in(hex);
    for (std::string word; in >> word;) {
        const size_t star = word.find('*');
        const size_t times = star == std::string::npos ? 1 : std::stoul(word.substr(star + 1));
        const std::string digits = word.substr(0, star);
        EXPECT_EQ(digits.size() % 2, 0U) << word;
        std::string piece;
        for (size_t i = 0; i + 1 < digits.size(); i += 2) {
            piece += static_cast<char>(std::stoi(digits.substr(i, 2), nullptr, 16));
        }
        pieces.insert(pieces.end(), times, piece);
    }
    return pieces;
}

std::string parse_bytes(const std::string &hex) { return joined(parse_pieces(hex)); }

std::string joined(const std::vector<std::string> &pieces) {
    return std::accumulate(pieces.begin(), pieces.end(), std::string());
}

std::string show_bytes(const std::string &bytes) {
    constexpr size_t kShown = 48;
    std::ostringstream out;
    out << bytes.size() << ":" << (bytes.size() > kShown ? "..." : "") << std::hex << std::uppercase;
    for (size_t i = bytes.size() > kShown ? bytes.size() - kShown : 0; i < bytes.size(); i++) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        out << (byte >> 4) << (byte & 0xF);
    }
    return out.str();
}

} // namespace jkc::testing
