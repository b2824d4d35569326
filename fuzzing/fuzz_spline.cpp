// SPDX-FileCopyrightText: Aerolith developers
// Any bytes as a spline file: read, painted, edited in every way and written again.
#include "document/openfile.h"
#include "document/splinebytes.h"
#include "editor/editspline.h"
#include "fuzzing/fuzzing.h"

#include <QtEndian>

#include <functional>

namespace {

constexpr qsizetype size_without_name = 4 + 3400;

// Whether the bytes are a complete file as the writer makes it, neither short nor foreign.
bool is_whole_file(const QByteArray& bytes) {
    if (bytes.size() < size_without_name)
        return false;
    const auto name = qFromBigEndian<quint32>(bytes.constData());
    return name % 2 == 0 && qsizetype(name) == bytes.size() - size_without_name;
}

void require_sound(const EditSpline& editor) {
    const SplineFoil& spline = editor.p->spline;
    REQUIRE(spline.point_count() >= 0 && spline.point_count() <= MAXNUMPOINTS);
    REQUIRE(spline.knot_count() >= 0 && spline.knot_count() <= MAXNUMKNOTS);
    REQUIRE(editor.spline_poly.isEmpty() || editor.spline_poly.size() == 999);
    REQUIRE(editor.f_scale >= 0.5 && editor.f_scale <= 4.0);
    REQUIRE(spline.make_SplinePoly().size() == (spline.has_curve() ? 999 : 0));
}

void edit(EditSpline& editor, const SplineFoil& read, int selected,
          const std::function<void()>& edit_once) {
    editor.p->spline = read;
    editor.pnt_selected = selected;
    edit_once();
    const int count = editor.p->spline.point_count();
    REQUIRE(count <= MAXNUMPOINTS && std::abs(count - read.point_count()) <= 1);
}

// Applies each edit of a point alone to the spline that was read, with each kind of selection, and
// then all edits in succession.
void edit_in_every_way(EditSpline& editor, const SplineFoil& read) {
    const std::function<void()> point_edits[] = {
        [&] { editor.SelectPoint(); },
        [&] { editor.MovePoint(3, -5); },
        [&] { editor.New_Point_Insert(QPoint(40, 30)); },
        [&] { editor.Append_New_Point(QPoint(20, 10)); },
        [&] { editor.Remove_Point(); },
        [&] { editor.Toggle_Conic_Control(); },
    };
    const std::function<void()> whole_edits[] = {
        [&] { editor.Normalize_Spline_Poly(); },
        [&] { editor.AdjustSpline_TE(); },
        [&] { editor.Translate_Spline(QPointF(1.5, -2.5)); },
        [&] { editor.ScaleFoil(1.0); },
        [&] { editor.RotateSpline(0.1); },
        [&] { editor.p->spline.init_knots(); },
    };
    for (const auto& edit_once : point_edits) {
        for (const int selected :
             {-1, 0, 1, 15, 29, 30, read.point_count() - 2, read.point_count()})
            edit(editor, read, selected, edit_once);
    }
    editor.p->spline = read;
    editor.pnt_selected = 1;
    for (const auto& edit_once : whole_edits)
        edit_once();
    for (const auto& edit_once : point_edits)
        edit_once();
    require_sound(editor);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static EditSpline editor;
    static myOpenFile files;
    editor.resize(200, 100);
    editor.Init_widget();

    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const MemoryFile file(bytes);
    REQUIRE(files.ReadParaStream(file.name()) == 1);
    const SplineFoil read = editor.p->spline;
    const QByteArray again = spline_bytes(*editor.p);
    REQUIRE(!is_whole_file(bytes) || again == bytes);
    ParaStruct other;
    read_spline_bytes(again, other);
    REQUIRE(spline_bytes(other) == again);

    editor.repaint_opened_spline();
    paint(&editor);
    require_sound(editor);
    editor.mousepressed = true;
    edit_in_every_way(editor, read);
    editor.Generate_symetric_spline();
    paint(&editor);
    REQUIRE(editor.p->spline.point_count() == 10);
    require_sound(editor);
    return 0;
}
