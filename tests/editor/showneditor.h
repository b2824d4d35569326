// SPDX-FileCopyrightText: Aerolith developers
// The editor in its own window, for tests with real events.
#pragma once

#include "editorfixture.h"
#include "support/exactcompare.h"

#include <QPoint>
#include <QSize>
#include <QTest>
#include <QWindow>

inline constexpr QSize editor_size = QSize(700, 500);

/// The active editor with the symmetric section, settled.
class ShownEditor : public TestEditor {
public:
    ShownEditor();

    /// Paints until nothing is pending, and resets the count of paints.
    void rest();

    /// The number of paints since the last call.
    int new_paints();

    /// Where a control point is drawn, widget pixels.
    QPoint place_of(int index) const;

    QWindow* handle() const { return windowHandle(); }

private:
    int noted = 0;
};

/// The frames that follow a change.
void paint_model(EditorModel& model, int frames);

/// Fails unless the editor's spline, curve, work polygon and view equal the model's.
#define COMPARE_WITH_MODEL(editor, model)                                                          \
    do {                                                                                           \
        COMPARE_POLYGON_BITS((editor).points(), (model).points());                                 \
        COMPARE_POLYGON_BITS((editor).spline_poly, (model).curve);                                 \
        COMPARE_POLYGON_BITS((editor).p->workAirfoil, (model).work);                               \
        COMPARE_BITS((editor).f_scale, (model).zoom);                                              \
        COMPARE_BITS((editor).p_D, (model).pan);                                                   \
    } while (false)
