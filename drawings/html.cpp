// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/html.h"

#include "drawings/html_p.h"
#include "drawings/scene.h"

#include <QCryptographicHash>

namespace drawings {

namespace {

// The only way for texts to enter the page, between tags and between double quotes.
QByteArray escaped(const QString& text) {
    return printable(text).toHtmlEscaped().toUtf8();
}

// A path whose folders are less prominent than the name.
QByteArray path_text(const QString& path) {
    const qsizetype name = path.lastIndexOf(u'/') + 1;
    const QByteArray folders = escaped(path.left(name)).replace("/", "/<wbr>");
    return "<bdi>" + (name > 0 ? "<span class=\"dir\">" + folders + "</span>" : QByteArray()) +
           escaped(path.mid(name)) + "</bdi>";
}

QByteArray tone_class(Tone tone) {
    switch (tone) {
    case Tone::plain:
        return "plain";
    case Tone::good:
        return "good";
    case Tone::odd:
        return "odd";
    case Tone::open:
        return "open";
    case Tone::bad:
        return "bad";
    }
    return {};
}

// The hash by which the content policy names a style or script.
QByteArray hash_source(const QByteArray& text) {
    return "'sha256-" + QCryptographicHash::hash(text, QCryptographicHash::Sha256).toBase64() +
           '\'';
}

// The script enables sorting.
QByteArray head_cell(const QString& head, const char* kind) {
    return QByteArray(R"(<th scope="col" class=")") + kind +
           R"(" aria-sort="none"><button type="button" disabled>)" + escaped(head) +
           "</button></th>\n";
}

QByteArray legend_list(const std::vector<LegendEntry>& legend) {
    QByteArray html = "<ul class=\"legend\">";
    for (const LegendEntry& entry : legend)
        html += R"(<li><svg viewBox="0 -6 32 12" aria-hidden="true"><path class=")" +
                line_class(entry.kind) + R"(" d="M1 0h30"/></svg>)" + escaped(entry.text) + "</li>";
    return html + "</ul>";
}

} // namespace

void HtmlPage::add(const HtmlRow& row) {
    const auto picture_cell = [&](std::size_t i) {
        QByteArray html = "<td class=\"pic\">";
        if (i < row.pictures.size() && !row.pictures[i].is_empty())
            html += R"(<button type="button" disabled aria-label="Enlarge )" +
                    escaped(settings.picture_columns[i].head + QStringLiteral(": ") + row.name) +
                    "\">" + picture_svg(row.pictures[i]) + "</button>";
        return html + "</td>\n";
    };
    rows += "<tr id=\"f" + QByteArray::number(++row_count) + "\">\n";
    const std::size_t pictures = settings.picture_columns.size();
    if (pictures > 0)
        rows += picture_cell(0);
    rows += "<th scope=\"row\">" + path_text(row.name) + "</th>\n<td data-v=\"" +
            QByteArray::number(row.state.rank) + "\"><span class=\"tag " +
            tone_class(row.state.tone) + "\">" + escaped(row.state.text) + "</span></td>\n";
    for (std::size_t i = 1; i < pictures; ++i)
        rows += picture_cell(i);
    for (std::size_t i = 0; i < settings.columns.size(); ++i) {
        const Cell cell = i < row.cells.size() ? row.cells[i] : Cell();
        rows += settings.columns[i].is_number ? "<td class=\"num\"" : "<td";
        if (cell.number)
            rows += " data-v=\"" + QByteArray::number(*cell.number, 'g', 9) + '"';
        rows += '>' + escaped(cell.text) + "</td>\n";
    }
    rows += "<td class=\"found\">";
    if (!row.remarks.isEmpty()) {
        rows += "<ul>";
        for (const QString& remark : row.remarks)
            rows += "<li>" + escaped(remark) + "</li>";
        rows += "</ul>";
    }
    rows += "</td>\n</tr>\n";
}

QByteArray HtmlPage::bytes(const std::vector<Fact>& summary) const {
    const QByteArray title = escaped(settings.title);
    QByteArray head = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                      "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
                      "style-src " +
                      hash_source(page_style) + "; script-src " + hash_source(page_script) +
                      "; base-uri 'none'; form-action 'none'\">\n"
                      "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
                      "<title>" +
                      title + "</title>\n<style>" + page_style + "</style>\n</head>\n<body>\n";
    head += "<header>\n<h1>" + title + "</h1>\n<p>" + escaped(settings.lead) +
            "</p>\n</header>\n<main>\n<section aria-label=\"Summary\">\n<dl class=\"facts\">\n";
    for (const Fact& fact : summary) {
        head +=
            "<div class=\"" + tone_class(fact.tone) + "\"><dt>" + escaped(fact.label) + "</dt><dd>";
        if (fact.state.isEmpty())
            head += escaped(fact.value);
        else
            head += R"(<button type="button" disabled aria-pressed="false" data-state=")" +
                    escaped(fact.state) + "\" aria-label=\"" +
                    escaped(fact.value + u' ' + fact.label + QStringLiteral(": show these files")) +
                    "\">" + escaped(fact.value) + "</button>";
        head += "</dd></div>\n";
    }
    head += "</dl>\n</section>\n";
    for (const PictureColumn& column : settings.picture_columns) {
        if (!column.legend.empty())
            head += "<div class=\"key\"><span>" + escaped(column.head) + "</span>" +
                    legend_list(column.legend) + "</div>\n";
    }
    head += "<div class=\"find\" hidden>\n<label for=\"find\">Show files with</label>\n"
            "<input id=\"find\" type=\"search\" autocomplete=\"off\" spellcheck=\"false\" "
            "aria-controls=\"files\" placeholder=\"name, result or remark\">\n</div>\n"
            "<p id=\"count\" role=\"status\" aria-live=\"polite\">" +
            QByteArray::number(row_count) + (row_count == 1 ? " file" : " files") +
            "</p>\n"
            "<div class=\"scroll\" role=\"region\" aria-label=\"Files\" tabindex=\"0\">\n"
            "<table id=\"files\">\n<thead>\n<tr>\n";
    if (!settings.picture_columns.empty())
        head += R"(<th scope="col" class="pic">)" + escaped(settings.picture_columns[0].head) +
                "</th>\n";
    head += head_cell(QStringLiteral("File"), "name") + head_cell(settings.state_head, "state");
    for (std::size_t i = 1; i < settings.picture_columns.size(); ++i)
        head += R"(<th scope="col" class="pic">)" + escaped(settings.picture_columns[i].head) +
                "</th>\n";
    for (const HtmlColumn& column : settings.columns)
        head += head_cell(column.head, column.is_number ? "num" : "txt");
    head += "<th scope=\"col\" class=\"found\">Remarks</th>\n</tr>\n</thead>\n<tbody>\n";

    QByteArray tail = "</tbody>\n</table>\n</div>\n</main>\n<footer>" + escaped(settings.foot) +
                      "</footer>\n<dialog id=\"large\" aria-labelledby=\"large-name\">\n"
                      "<div class=\"bar\"><h2 id=\"large-name\"></h2>\n"
                      "<button type=\"button\" id=\"before\">Previous</button>\n"
                      "<button type=\"button\" id=\"after\">Next</button>\n"
                      "<button type=\"button\" id=\"close\">Close</button></div>\n"
                      "<div id=\"large-pictures\">\n";
    for (const PictureColumn& column : settings.picture_columns)
        tail += "<figure><div class=\"paper\"></div><figcaption>" + escaped(column.caption) +
                legend_list(column.legend) + "</figcaption></figure>\n";
    tail += "</div>\n<dl id=\"large-values\"></dl>\n<div id=\"large-found\"></div>\n</dialog>\n"
            "<script>" +
            QByteArray(page_script) + "</script>\n</body>\n</html>\n";

    QByteArray page;
    page.reserve(head.size() + rows.size() + tail.size());
    return page.append(head).append(rows).append(tail);
}

} // namespace drawings
