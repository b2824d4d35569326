// SPDX-FileCopyrightText: Aerolith developers
// Sections for the tests of ribs and pictures.
#pragma once

#include "drawings/rib.h"
#include "drawings/scene.h"
#include "sections/outlines.h"

#include <vector>

/// The section of straight lines through @p points.
inline sections::Section polygon_section(const QPolygonF& points) {
    std::vector<sections::Piece> pieces;
    for (qsizetype i = 1; i < points.size(); ++i)
        pieces.push_back(sections::Piece::line(points[i - 1], points[i]));
    sections::Section section;
    section.curve = sections::Curve(std::move(pieces));
    section.points = points;
    return section;
}

/// The section of a table, with openings where the second one is above 0.
inline sections::Section table_section(const QPolygonF& points, double first = 0.0,
                                       double second = 0.0) {
    tables::Table table = table_of(points);
    if (second > 0.0)
        table.openings = tables::Openings{first, second};
    return *sections::section_of_table(table).section;
}

/// The same for a spline.
inline sections::Section spline_section(const QPolygonF& points, double first = 0.0,
                                        double second = 0.0) {
    SplineFoil spline = spline_of(points);
    spline.startVent = float(first);
    spline.endVent = float(second);
    return *sections::section_of_spline(spline).section;
}

/// The paths of a layer.
inline std::vector<drawings::Path> paths_of(const drawings::Scene& scene, drawings::Layer layer) {
    std::vector<drawings::Path> paths;
    for (const drawings::Element& element : scene.elements) {
        if (element.layer != layer)
            continue;
        if (const auto* path = std::get_if<drawings::Path>(&element.shape))
            paths.push_back(*path);
    }
    return paths;
}

/// The only path of a layer, as straight lines.
inline QPolygonF points_of(const drawings::Scene& scene, drawings::Layer layer) {
    const std::vector<drawings::Path> paths = paths_of(scene, layer);
    return paths.size() == 1 ? drawings::flattened(paths.front(), 1e-4) : QPolygonF();
}
