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
    std::array<char, 32> digits{};
    std::snprintf(digits.data(), digits.size(), "%.6g", value);
    m_line += m_line.empty() ? "\"" : ", \"";
    m_line.append(key).append("\": ").append(digits.data());
    return *this;
}

// Keys and values are names from this folder's sources: nothing in them needs escaping.
Record& Record::set(std::string_view key, std::string_view value) {
    m_line += m_line.empty() ? "\"" : ", \"";
    m_line.append(key).append("\": \"").append(value).append("\"");
    return *this;
}

Record& Record::setSpread(const Spread& spread) {
    return set("ns", spread.median).set("lower", spread.lower).set("upper", spread.upper);
}

}  // namespace ZroCommon::bench
