// SPDX-FileCopyrightText: Aerolith developers
// Prints a generated document: make_documents manual|bash|zsh|fish|grammar
#include "cli/documents.h"

#include <cstdio>
#include <map>

int main(int argc, char* argv[]) {
    static const std::map<std::string, std::string (*)()> documents = {
        {"manual", cli::manual_page},
        {"bash", cli::bash_completion},
        {"zsh", cli::zsh_completion},
        {"fish", cli::fish_completion},
        {"grammar", cli::grammar}};
    const auto found = documents.find(argc == 2 ? argv[1] : "");
    if (found == documents.end())
        return 2;
    const std::string text = found->second();
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && fflush(stdout) == 0
               ? 0
               : 1;
}
