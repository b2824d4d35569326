// SPDX-FileCopyrightText: Aerolith developers
#include "cli/report.h"

#include "cli/outputs.h"
#include "cli/shown.h"

#include <QJsonArray>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <system_error>

#include <sys/stat.h>

namespace cli {

namespace fs = std::filesystem;

namespace {

constexpr int most_remarks = 12;

// The findings, with the reason first and only once.
QStringList remarks_of(const Outcome& outcome, const QString& reason) {
    QStringList remarks;
    const auto add = [&remarks](const QString& text) {
        if (!text.isEmpty() && !remarks.contains(text))
            remarks.append(text);
    };
    add(outcome.json[QStringLiteral("error")].toString());
    const QString first = QString::fromStdString(shown(reason));
    add(first);
    for (const QJsonValue value : outcome.json[QStringLiteral("findings")].toArray()) {
        const QJsonObject finding = value.toObject();
        const QString text = finding[QStringLiteral("text")].toString();
        const int line = finding[QStringLiteral("line")].toInt();
        const bool is_doubt = finding[QStringLiteral("gravity")] == QStringLiteral("doubt");
        if (text == first)
            remarks.removeAll(first);
        add((line > 0 ? QStringLiteral("line ") + QString::number(line) + QStringLiteral(": ")
                      : QString()) +
            (is_doubt ? QStringLiteral("doubtful: ") : QString()) + text);
    }
    const qsizetype more = remarks.size() - most_remarks;
    if (more > 0) {
        remarks = remarks.mid(0, most_remarks);
        remarks.append(QStringLiteral("and ") + QString::number(more) + QStringLiteral(" more"));
    }
    return remarks;
}

bool has_doubts(const QJsonObject& json) {
    const QJsonArray findings = json[QStringLiteral("findings")].toArray();
    return std::any_of(findings.begin(), findings.end(), [](const QJsonValue& finding) {
        return finding.toObject()[QStringLiteral("gravity")] == QStringLiteral("doubt");
    });
}

double median(std::vector<double> numbers) {
    std::sort(numbers.begin(), numbers.end());
    const std::size_t half = numbers.size() / 2;
    return numbers.size() % 2 == 1 ? numbers[half] : 0.5 * (numbers[half - 1] + numbers[half]);
}

bool is_same_or_below(const std::string& path, const std::string& folder) {
    return path.compare(0, folder.size(), folder) == 0 &&
           (path.size() == folder.size() || path[folder.size()] == '/');
}

} // namespace

void Report::add(const std::string& name, const Outcome& outcome) {
    const ReportRow& given = outcome.row ? *outcome.row : ReportRow{style.failure, {}, {}, {}};
    drawings::HtmlRow row;
    row.name = QString::fromStdString(name);
    row.state = given.state;
    row.cells = given.cells;
    row.pictures = given.pictures;
    row.remarks = remarks_of(outcome, given.reason);
    const bool is_unwritten = outcome.row && outcome.json.contains(QStringLiteral("error"));
    if (is_unwritten)
        row.state = {QStringLiteral("not written"), drawings::Tone::bad, style.failure.rank};
    page.add(row);

    ++files;
    ++counts[row.state.text];
    doubtful += has_doubts(outcome.json) ? 1 : 0;
    if (style.main_column < 0 || std::size_t(style.main_column) >= row.cells.size())
        return;
    const std::optional<double> number = row.cells[std::size_t(style.main_column)].number;
    if (!number || !std::isfinite(*number))
        return;
    if (numbers.empty() || *number > worst.number)
        worst = {*number, row.name};
    numbers.push_back(*number);
}

std::vector<drawings::Fact> Report::facts() const {
    using drawings::Tone;
    std::vector<drawings::Fact> list = {
        {files == 1 ? QStringLiteral("file") : QStringLiteral("files"), QString::number(files),
         Tone::plain, QString()}};
    std::map<QString, int> left = counts;
    for (const auto& [state, label] : style.states) {
        const int count = left[state.text];
        list.push_back({label, QString::number(count), count > 0 ? state.tone : Tone::plain,
                        count > 0 ? state.text : QString()});
        left.erase(state.text);
    }
    for (const auto& [state, count] : left)
        list.push_back({state, QString::number(count), Tone::bad, state});
    if (doubtful > 0)
        list.push_back(
            {QStringLiteral("doubtful"), QString::number(doubtful), Tone::odd, QString()});
    if (!numbers.empty()) {
        list.push_back({QStringLiteral("worst: ") + worst.name,
                        style.main_text(worst.number),
                        Tone::plain,
                        {}});
        list.push_back(
            {QStringLiteral("median"), style.main_text(median(numbers)), Tone::plain, {}});
    }
    return list;
}

QByteArray Report::bytes() const {
    return page.bytes(facts());
}

std::string report_refusal(const Options& options, const std::vector<std::string>& read,
                           const std::vector<std::string>& outputs) {
    const std::string& name = options.report;
    const std::string label = "--report " + shown(name);
    if (name == "-")
        return "--report needs a file name; standard output is for the results";
    struct stat status = {};
    const bool exists = ::stat(name.c_str(), &status) == 0;
    if (name.back() == '/' || (exists && S_ISDIR(status.st_mode)))
        return label + " is a folder";

    Places places;
    const std::string place = places.place_of(name);
    for (const std::string& output : outputs) {
        const std::string other = places.place_of(output);
        if (is_same_or_below(other, place) || is_same_or_below(place, other))
            return label + " is also another output or its folder";
    }
    const auto is_same_file = [&](const std::string& other) {
        struct stat found = {};
        return other != "-" && ::stat(other.c_str(), &found) == 0 &&
               found.st_dev == status.st_dev && found.st_ino == status.st_ino;
    };
    if (exists && S_ISREG(status.st_mode)) {
        if (std::any_of(read.begin(), read.end(), is_same_file))
            return label + " is an input; choose another name";
        if (std::any_of(outputs.begin(), outputs.end(), is_same_file))
            return label + " is the same file as another output";
        if (!options.force)
            return label + " exists; use --force to replace it";
    }
    std::error_code error;
    // Only folders inside --dir are created.
    const bool makes_folder =
        !options.folder.empty() &&
        is_same_or_below(place, fs::path(places.place_of(options.folder + "/x")).parent_path());
    if (!makes_folder && !fs::is_directory(fs::path(place).parent_path(), error))
        return label + ": there is no such folder";
    return {};
}

} // namespace cli
