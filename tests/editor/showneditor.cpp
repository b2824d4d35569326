// SPDX-FileCopyrightText: Aerolith developers
// The shown editor.
#include "showneditor.h"

ShownEditor::ShownEditor() : TestEditor(editor_size) {
    show();
    if (!QTest::qWaitForWindowActive(this))
        qFatal("The window does not become active");
    set_settled_section();
    rest();
}

void ShownEditor::rest() {
    if (!paint_until_idle(*this))
        qFatal("The picture does not come to rest");
    noted = paints;
}

int ShownEditor::new_paints() {
    const int count = paints - noted;
    noted = paints;
    return count;
}

QPoint ShownEditor::place_of(int index) const {
    return (f_scale * p->spline.CP[index] + p_D).toPoint();
}

void paint_model(EditorModel& model, int frames) {
    for (int i = 0; i < frames; ++i)
        model.paint_log();
}
