// SPDX-FileCopyrightText: Aerolith developers
#include "cli/rib_list.h"

#include "cli/number.h"
#include "cli/shown.h"

#include <algorithm>

namespace cli {

namespace {

constexpr double greatest_chord = 1e5;
constexpr int most_copies = 1000;

// The fields of a line; nothing if a quote is not closed.
std::optional<std::vector<std::string>> fields_of(const std::string& line) {
    std::vector<std::string> fields(1);
    bool quoted = false;
    for (std::size_t i = 0; i < line.size(); ++i) {
        if (quoted && line[i] == '"' && i + 1 < line.size() && line[i + 1] == '"')
            fields.back() += line[i++];
        else if (line[i] == '"')
            quoted = !quoted;
        else if (line[i] == ',' && !quoted)
            fields.emplace_back();
        else
            fields.back() += line[i];
    }
    return quoted ? std::nullopt : std::optional(fields);
}

std::string trimmed(const std::string& text) {
    const std::size_t first = text.find_first_not_of(" \t");
    return first == std::string::npos
               ? std::string()
               : text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

// Returns why the fields are not a valid row; empty if they are.
QString read_row(const std::vector<std::string>& fields, RibRow& row) {
    const auto field = [&fields](std::size_t i) {
        return i < fields.size() ? trimmed(fields[i]) : std::string();
    };
    const auto refused = [](const std::string& word, const char* expected) {
        return QStringLiteral("'%1', expected %2")
            .arg(QString::fromStdString(shown(word)), QLatin1String(expected));
    };
    if (fields.size() > 5)
        return QStringLiteral("%1 fields, expected at most file, chord, text, count, mirror")
            .arg(fields.size());
    row.file = field(0);
    if (row.file.empty())
        return QStringLiteral("no file name");
    if (!field(1).empty()) {
        row.chord = number_of<double>(field(1));
        if (!row.chord || !(*row.chord >= 0.001) || *row.chord > greatest_chord)
            return refused(field(1), "a chord in mm, 0.001 to 100000");
    }
    if (!field(2).empty())
        row.text = QString::fromStdString(shown(field(2)));
    if (!field(3).empty()) {
        const std::optional<int> count = number_of<int>(field(3));
        if (!count || *count < 1 || *count > most_copies)
            return refused(field(3), "a count of 1 to 1000");
        row.count = *count;
    }
    if (!field(4).empty()) {
        if (field(4) != "yes" && field(4) != "no")
            return refused(field(4), "yes or no for mirror");
        row.mirror = field(4) == "yes";
    }
    return {};
}

} // namespace

RibList read_rib_list(const QByteArray& bytes) {
    RibList list;
    QByteArray text = bytes.startsWith("\xef\xbb\xbf") ? bytes.mid(3) : bytes;
    text.replace("\r\n", "\n").replace('\r', '\n');
    const QByteArrayList lines = text.split('\n');
    int ribs = 0;
    bool is_first = true;
    for (qsizetype i = 0; i < lines.size(); ++i) {
        if (lines[i].trimmed().isEmpty() || lines[i].startsWith('#'))
            continue;
        const auto fault = [&](const QString& reason) {
            list.findings.append({tables::Gravity::error, int(i) + 1, reason});
        };
        RibRow row;
        row.line = int(i) + 1;
        const auto fields = fields_of(lines[i].toStdString());
        const bool is_header = is_first && fields && trimmed(fields->front()) == "file";
        is_first = false;
        if (is_header)
            continue;
        const QString reason =
            fields ? read_row(*fields, row) : QStringLiteral("an unclosed double quote");
        if (!reason.isEmpty()) {
            fault(reason);
            continue;
        }
        ribs += row.count;
        if (ribs > most_ribs) {
            fault(QStringLiteral("more than %1 ribs").arg(most_ribs));
            return list;
        }
        list.rows.push_back(std::move(row));
    }
    if (list.rows.empty() && list.findings.isEmpty())
        list.findings.append({tables::Gravity::error, 0, QStringLiteral("no ribs in the list")});
    return list;
}

} // namespace cli
