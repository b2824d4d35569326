// SPDX-FileCopyrightText: Aerolith developers
#include "drawings/strokes.h"

#include <algorithm>
#include <cstring>

namespace drawings {

namespace {

// Lines of a character, separated by blanks. Two digits are a point: x from 0 to 4, and y from 0,
// the baseline, to 6.
struct Glyph {
    char character;
    const char* lines;
};

constexpr Glyph glyphs[] = {
    {' ', ""},
    {'.', "2021"},
    {'-', "0343"},
    {'/', "0046"},
    {'0', "100105163645413010 1135"},
    {'1', "152620 1030"},
    {'2', "05163645440040"},
    {'3', "05163645443313 334241301001"},
    {'4', "30360242"},
    {'5', "460603334241301001"},
    {'6', "4536160501103041423303"},
    {'7', "064610"},
    {'8', "13040516364544331302011030414233"},
    {'9', "0110304145361605041343"},
    {'A', "002640 1333"},
    {'B', "00063645443303 3342413000"},
    {'C', "4536160501103041"},
    {'D', "00062644422000"},
    {'E', "46060040 0333"},
    {'F', "460600 0333"},
    {'G', "45361605011030414323"},
    {'H', "0006 4046 0343"},
    {'I', "2026 1030 1636"},
    {'J', "4641301001"},
    {'K', "0006 4602 1340"},
    {'L', "060040"},
    {'M', "0006234640"},
    {'N', "00064046"},
    {'O', "100105163645413010"},
    {'P', "00063645443303"},
    {'Q', "100105163645413010 2240"},
    {'R', "00063645443303 2340"},
    {'S', "453616050413334241301001"},
    {'T', "0646 2620"},
    {'U', "060110304146"},
    {'V', "062046"},
    {'W', "0610233046"},
    {'X', "0046 0640"},
    {'Y', "062346 2320"},
    {'Z', "06460040"},
};

constexpr double grid_height = 6.0;
constexpr double grid_advance = 6.0;

const Glyph* glyph_of(QChar character) {
    const ushort wanted = character.toUpper().unicode();
    const auto* const found =
        std::find_if(std::begin(glyphs), std::end(glyphs),
                     [wanted](const Glyph& glyph) { return wanted == ushort(glyph.character); });
    return found == std::end(glyphs) ? nullptr : found;
}

void put_glyph(Scene& scene, Layer layer, const Glyph& glyph, QPointF at, QPointF scale) {
    QPolygonF points;
    for (const char* c = glyph.lines;; c += 2) {
        if (*c != ' ' && *c != '\0') {
            points << at + QPointF(scale.x() * (c[0] - '0'), scale.y() * (c[1] - '0'));
            continue;
        }
        if (!points.isEmpty())
            scene.add(layer, path_through(points, false));
        points.clear();
        if (*c == '\0')
            return;
        --c;
    }
}

} // namespace

QString stroke_texts(Scene& scene) {
    Scene result;
    QString unknown;
    for (Element& element : scene.elements) {
        const auto* text = std::get_if<Text>(&element.shape);
        if (!text) {
            result.elements.push_back(std::move(element));
            continue;
        }
        QPointF at = text->at;
        const double advance =
            text_box(*text).width() / std::max<double>(1.0, double(text->text.size()));
        for (const QChar character : text->text) {
            if (const Glyph* glyph = glyph_of(character))
                put_glyph(result, element.layer, *glyph, at,
                          {advance / grid_advance, text->height / grid_height});
            else if (!unknown.contains(character))
                unknown += character;
            at.rx() += advance;
        }
    }
    scene = std::move(result);
    return unknown;
}

} // namespace drawings
