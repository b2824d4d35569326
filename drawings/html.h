// SPDX-FileCopyrightText: Aerolith developers
// Results of many files as one page for a browser.
#pragma once

#include "drawings/html_picture.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace drawings {

/// How well something is; gives its colour.
enum class Tone { plain, good, odd, open, bad };

/// A text with a colour, for instance a verdict.
struct Tag {
    QString text;
    Tone tone = Tone::plain;
    int rank = 0; ///< By which tags sort.
};

/// A cell of a column.
struct Cell {
    QString text;
    std::optional<double> number; ///< By which it sorts; none: by its text.
};

struct HtmlColumn {
    QString head;
    bool is_number = false; ///< Set to the right.
};

/// A column of small pictures.
struct PictureColumn {
    QString head;
    QString caption; ///< Below the large picture: what is seen.
    std::vector<LegendEntry> legend;
};

/// One file.
struct HtmlRow {
    QString name;
    Tag state;
    std::vector<Cell> cells; ///< As many as columns, or fewer.
    std::vector<Picture>
        pictures; ///< As many as picture columns, or fewer; empty ones are left out.
    QStringList remarks;
};

/// One figure of the summary.
struct Fact {
    QString label;
    QString value;
    Tone tone = Tone::plain;
    QString state; ///< The tag whose rows a click on the figure shows; empty for none.
};

struct HtmlSettings {
    QString title;
    QString lead; ///< A sentence below the title.
    QString state_head;
    std::vector<HtmlColumn> columns;
    std::vector<PictureColumn>
        picture_columns; ///< The first stands before the names, others behind the states.
    QString foot;
};

/// A page in one file, which asks for nothing else: the figures of a summary, then a table of
/// all files that sorts by a click on a head and shows what is typed. It can be read without
/// its script. Texts are texts, whatever they hold; see printable() for what no file can hold.
/// Valid HTML; the same rows give the same bytes.
class HtmlPage {
public:
    explicit HtmlPage(HtmlSettings given) : settings(std::move(given)) {}

    /// Adds a row at the end of the table. It is kept as bytes.
    void add(const HtmlRow& row);

    /// The whole file.
    QByteArray bytes(const std::vector<Fact>& summary) const;

private:
    HtmlSettings settings;
    QByteArray rows;
    int row_count = 0;
};

} // namespace drawings
