#include "bench/support/Record.h"

#include <array>
#include <cstdio>
#include <iostream>

namespace ZroCommon::bench {

Record::Record(std::string_view job, std::string_view corpus, std::string_view contender) {
    set("job", job).set("corpus", corpus).set("contender", contender);
}

Record::~Record() {
    std::cout << '{' << m_line << '}' << std::endl;
}

Record& Record::set(std::string_view key, double value) {
    beginKey(key);
    append(value);
    return *this;
}

// Keys and values are names from this folder's sources: nothing in them needs escaping.
Record& Record::set(std::string_view key, std::string_view value) {
    beginKey(key);
    m_line.append("\"").append(value).append("\"");
    return *this;
}

Record& Record::setSpread(const Spread& spread) {
    set("ns", spread.median).beginKey("rounds");
    char separator = '[';
    for (const double round : spread.rounds) {
        m_line += separator;
        append(round);
        separator = ',';
    }
    m_line += separator == '[' ? "[]" : "]";
    return *this;
}

void Record::beginKey(std::string_view key) {
    m_line.append(m_line.empty() ? "\"" : ", \"").append(key).append("\": ");
}

void Record::append(double value) {
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), "%.6g", value);
    m_line += digits.data();
}

}  // namespace ZroCommon::bench
