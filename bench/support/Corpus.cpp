#include "bench/support/Corpus.h"

#include <algorithm>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace ZroCommon::bench {
namespace {

std::string pathOf(const Options& options, const std::string& name) {
    return options.data + "/" + name + (name == "small" ? ".docs" : ".fo");
}

std::vector<std::string_view> splitAtNul(std::string_view bytes) {
    std::vector<std::string_view> documents;
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\0'), bytes.size());
        documents.push_back(bytes.substr(0, end));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return documents;
}

}  // namespace

double Corpus::size() const {
    double sum = 0;
    for (const std::string_view document : documents) {
        sum += static_cast<double>(document.size());
    }
    return sum;
}

int Corpus::rounds(const Options& options) const {
    constexpr double kSeconds = 50e6;  // bytes that slow contenders need a second or more for
    return size() > kSeconds ? std::max(1, options.rounds / 4) : options.rounds * 2;
}

const std::vector<std::string>& corpusNames() {
    static const std::vector<std::string> s_names = {
        "fo-10m", "docbook",    "japanese", "small",  // the four that goals bind on
        "text",   "attributes", "fo-100k",  "fo-100m"};
    return s_names;
}

bool hasCorpus(const Options& options, const std::string& name) {
    const bool found = std::ifstream(pathOf(options, name)).good();
    if (!found) {
        std::cerr << "skipped: no " << pathOf(options, name) << '\n';
    }
    return found;
}

Corpus loadCorpus(const Options& options, const std::string& name) {
    Corpus corpus;
    corpus.name = name;
    corpus.file = pathOf(options, name);
    std::ifstream in(corpus.file, std::ios::binary | std::ios::ate);
    corpus.bytes.resize(static_cast<std::size_t>(std::max<std::streamoff>(in.tellg(), 0)));
    in.seekg(0).read(corpus.bytes.data(), static_cast<std::streamsize>(corpus.bytes.size()));
    if (!in) {
        throw std::runtime_error("cannot read " + corpus.file);
    }
    corpus.documents = splitAtNul(corpus.bytes);
    return corpus;
}

}  // namespace ZroCommon::bench
