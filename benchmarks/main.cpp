// SPDX-FileCopyrightText: Aerolith developers
// Measures the program against the plain versions and prints the ratios.
#include "harness.h"

#include <QApplication>

#include <cstdio>
#include <cstring>

namespace {

struct Group {
    const char* name;
    void (*run)();
};

constexpr Group groups[] = {{"sampling", bench_sampling},  {"painting", bench_painting},
                            {"reading", bench_reading},    {"table", bench_table},
                            {"fourier", bench_fourier},    {"start", bench_start},
                            {"companion", bench_companion}};

bool wanted(const char* name, int argc, char* argv[]) {
    if (argc < 2)
        return true;
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], name) == 0)
            return true;
    }
    return false;
}

} // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    print_head();
    for (const Group& group : groups) {
        if (wanted(group.name, argc, argv))
            group.run();
    }
    return 0;
}
