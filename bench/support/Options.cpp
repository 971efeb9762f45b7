#include "bench/support/Options.h"

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string_view>

#include "zro/foundation/ZRError.h"

namespace ZroCommon::bench {
namespace {

bool wants(const std::vector<std::string>& chosen, const std::string& name) {
    return chosen.empty() || std::find(chosen.begin(), chosen.end(), name) != chosen.end();
}

[[noreturn]] void usage(const char* program) {
    std::cerr
        << "usage: " << program
        << " [--data DIR] [--rounds N] [--megabytes N] [--corpus NAME]... [--contender NAME]...\n";
    std::exit(2);
}

bool apply(Options& options, std::string_view option, const char* value) {
    if (option == "--data") {
        options.data = value;
    } else if (option == "--rounds") {
        options.rounds = std::max(1, std::atoi(value));
    } else if (option == "--megabytes") {
        options.megabytes = std::atof(value);
    } else if (option == "--corpus") {
        options.corpora.emplace_back(value);
    } else if (option == "--contender") {
        options.contenders.emplace_back(value);
    } else {
        return false;
    }
    return true;
}

}  // namespace

bool Options::wantsCorpus(const std::string& name) const {
    return wants(corpora, name);
}

bool Options::wantsContender(const std::string& name) const {
    return wants(contenders, name);
}

Options parseOptions(int argc, char** argv) {
    Options options;
    for (int index = 1; index < argc; index += 2) {
        if (index + 1 == argc || !apply(options, argv[index], argv[index + 1])) {
            usage(argv[0]);
        }
    }
    return options;
}

int runProgram(int argc, char** argv, void (*run)(const Options& options)) {
    try {
        run(parseOptions(argc, argv));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << argv[0] << ": " << error.what() << '\n';
    } catch (const ZRError& error) {
        std::string message;
        std::cerr << argv[0] << ": " << error.getMessage().toUTF8String(message) << '\n';
    }
    return 1;
}

}  // namespace ZroCommon::bench
