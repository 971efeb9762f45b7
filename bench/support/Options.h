#pragma once

#include <string>
#include <vector>

namespace ZroCommon::bench {

/// What every benchmark program takes on its command line.
struct Options {
    std::string data;                     ///< folder of the documents, from make_corpus.py
    int rounds = 11;                      ///< measured rounds; the median is reported
    double megabytes = 1024;              ///< size of the document that is made while it is read
    std::vector<std::string> corpora;     ///< only these documents; empty means all
    std::vector<std::string> contenders;  ///< only these contenders; empty means all

    bool wantsCorpus(const std::string& name) const;
    bool wantsContender(const std::string& name) const;
};

/// Reads `--data DIR --rounds N --megabytes N --corpus NAME --contender NAME`, the last two
/// repeatable; ends the program with status 2 and a usage line on anything else.
Options parseOptions(int argc, char** argv);

/// The body of every `main`: reads the options, runs, and answers with the exit status: 1 and a
/// line on standard error when something was thrown.
int runProgram(int argc, char** argv, void (*run)(const Options& options));

}  // namespace ZroCommon::bench
