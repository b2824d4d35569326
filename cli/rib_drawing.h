// SPDX-FileCopyrightText: Aerolith developers
// Section files as drawings of ribs.
#pragma once

#include "cli/inputs.h"
#include "cli/rib_list.h"
#include "cli/rib_options.h"
#include "drawings/scene.h"
#include "sections/section.h"
#include "tables/table.h"

#include <QByteArray>
#include <QList>
#include <QSizeF>

#include <optional>
#include <string>
#include <vector>

namespace cli {

/// The drawing of one input. If there is no file, an error among the findings says why.
struct RibDrawing {
    std::optional<QByteArray> file;
    QString layout; ///< Of the input; "ribs" for a list.
    int points = 0; ///< Of the outline, or control points; for a list the number of ribs.
    QSizeF size;    ///< Of the drawing, mm.
    QList<tables::Finding> findings;
};

/// Draws ribs with the options of a run.
class RibDrawer {
public:
    /// @param format "dxf", "svg" or "pdf"; pdf creates the application object if there is none
    RibDrawer(const Options& options, const std::string& format);

    /// Why the options cannot be combined; empty if they can.
    const std::string& refusal() const { return settings.refusal; }

    /// The rib of one section file, or the ribs of a list.
    RibDrawing drawing(const Input& input, const QByteArray& bytes) const;

private:
    // The ribs of a list that are drawn so far.
    struct Pieces {
        std::vector<drawings::Scene> scenes;
        std::size_t lines = 0;
    };

    RibDrawing rib_of_file(const Input& input, const QByteArray& bytes) const;
    RibDrawing sheet_of_list(const Input& list, const QByteArray& bytes) const;
    QList<tables::Finding> add_row(const RibRow& row, const std::string& list,
                                   Pieces& pieces) const;
    std::optional<sections::Section> section_of(const QByteArray& bytes, RibDrawing& drawing) const;
    std::optional<drawings::Scene> scene_of(const sections::Section& section,
                                            const drawings::RibOptions& rib,
                                            RibDrawing& drawing) const;
    void write(drawings::Scene& scene, RibDrawing& drawing) const;

    const RibSettings settings;
    const std::string format;
    const bool is_list;
    const std::string output;
    tables::ReadOptions reading;
    std::optional<tables::Openings> openings;
};

} // namespace cli
