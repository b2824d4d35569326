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

/// A rating, which gives the colour.
enum class Tone { plain, good, odd, open, bad };

/// A text with a colour, for instance a verdict.
struct Tag {
    QString text;
    Tone tone = Tone::plain;
    int rank = 0; ///< Sorting key of tags.
};

/// A cell of a column.
struct Cell {
    QString text;
    std::optional<double> number; ///< Sorting key; without it the text is the key.
};

struct HtmlColumn {
    QString head;
    bool is_number = false; ///< Right-aligned.
};

/// A column of small pictures.
struct PictureColumn {
    QString head;
    QString caption; ///< What the picture shows; below its enlarged form.
    std::vector<LegendEntry> legend;
};

/// One file.
struct HtmlRow {
    QString name;
    Tag state;
    std::vector<Cell> cells; ///< At most as many as columns.
    std::vector<Picture>
        pictures; ///< At most as many as picture columns; empty ones are not shown.
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
        picture_columns; ///< The first comes before the names, the others after the states.
    QString foot;
};

/// A self-contained page in one file: the figures of a summary, then a table of all files that is
/// sorted by a click on a column head and filtered by typing. It can be read without its script.
/// Texts are never interpreted as markup; see printable() for characters that no file can hold.
/// Valid HTML; the same rows give the same bytes.
class HtmlPage {
public:
    explicit HtmlPage(HtmlSettings given) : settings(std::move(given)) {}

    /// Adds a row at the end of the table. It is kept as bytes.
    void add(const HtmlRow& row);

    /// The complete file.
    QByteArray bytes(const std::vector<Fact>& summary) const;

private:
    HtmlSettings settings;
    QByteArray rows;
    int row_count = 0;
};

} // namespace drawings
