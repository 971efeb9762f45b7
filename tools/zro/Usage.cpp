#include "tools/zro/Usage.h"

#include <algorithm>
#include <numeric>
#include <string>
#include <vector>

#include "tools/zro/Text.h"

namespace zro {
namespace {

// The last command that was understood.
const CLI::App& deepestCommand(const CLI::App& program) {
    const CLI::App* command = &program;
    while (!command->get_subcommands().empty()) {
        command = command->get_subcommands().front();
    }
    return *command;
}

// How many letters have to be put in, left out or replaced.
std::size_t distance(const std::string& from, const std::string& to) {
    std::vector<std::size_t> row(to.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (const char letter : from) {
        std::size_t diagonal = row[0]++;
        for (std::size_t j = 0; j < to.size(); ++j) {
            const std::size_t replaced = diagonal + (letter == to[j] ? 0 : 1);
            diagonal = row[j + 1];
            row[j + 1] = std::min({replaced, row[j] + 1, diagonal + 1});
        }
    }
    return row.back();
}

// The command that was probably meant, or nothing.
std::string nearest(const std::string& word, const std::vector<const CLI::App*>& commands) {
    constexpr std::size_t kLongestCommand = 32;
    std::string best;
    std::size_t least = word.size() > kLongestCommand ? 0 : (word.size() + 1) / 3 + 1;
    for (const CLI::App* command : commands) {
        const std::size_t now = least == 0 ? 0 : distance(word, command->get_name());
        if (now < least) {
            least = now;
            best = command->get_name();
        }
    }
    return best;
}

}  // namespace

Complaint complaintOn(const CLI::App& program, const CLI::ParseError& error) {
    const CLI::App& parent = deepestCommand(program);
    const auto commands = parent.get_subcommands([](const CLI::App*) { return true; });
    const std::vector<std::string> rest = program.remaining(true);
    if (commands.empty() || rest.empty()) {
        return {error.what()};
    }
    const std::string& word = rest.front();
    const std::string shown = printable(fromUtf8(word));
    if (word.starts_with('-')) {
        return {"unknown option " + shown};
    }
    const std::string path = &parent == &program ? "" : parent.get_name() + " ";
    Complaint complaint{"unknown command " + path + shown};
    if (const std::string meant = nearest(word, commands); !meant.empty()) {
        complaint.hint = "did you mean zro " + path + meant + "? " + complaint.hint;
    }
    return complaint;
}

}  // namespace zro
