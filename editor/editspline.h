// SPDX-FileCopyrightText: Aerolith developers
// The drawing area: shows the template and the spline and edits the spline.
#pragma once

#include "document/frames.h"
#include "document/parastruct.h"

#include <QBasicTimer>
#include <QPoint>
#include <QPointF>
#include <QPolygonF>
#include <QRect>
#include <QSize>
#include <QString>
#include <QVector2D>
#include <QWidget>

#include <memory>

class QPainter;
class TemplateImage;

/// Editor of the document's spline over its template.
///
/// Coordinate frames:
/// - chord units: leading edge (0, 0), trailing edge (1, 0), y upwards; the template
///   and the work polygon;
/// - logical pixels: (xc + x L_T, yc - y L_T); the control points and the curve;
/// - widget pixels: f_scale * logical + p_D; the mouse.
///
/// The logical pixels depend on the widget's size, so every Init_widget() clears the spline.
/// Handlers and operations may be called directly, without an event.
class EditSpline : public QWidget {
    Q_OBJECT

public:
    explicit EditSpline(QWidget* parent = nullptr);
    ~EditSpline() override;

    ParaStruct* p;             ///< The document.
    QPolygonF spline_poly;     ///< The curve as of the last evaluation, logical pixels.
    QRect MyRect;              ///< rect() at the last Init_widget(); window of the painter.
    int fontheight = 10;       ///< Nominal text height, pixels.
    QPoint lastPos;            ///< Last mouse position, widget pixels.
    QPointF lastPosF;          ///< The position of the last press, widget pixels.
    QPointF Orig;              ///< Leading edge, logical pixels.
    QPointF curPnt;            ///< Position used for the point added last.
    double f_scale = 1.0;      ///< Zoom factor, within 0.5..4.
    QPointF LE;                ///< Not used.
    QPointF TE;                ///< Trailing edge, logical pixels.
    int L_T = 0;               ///< Chord length, pixels.
    int H = 0;                 ///< Height of MyRect less 1, pixels.
    int wr = 0;                ///< Width of MyRect less 1, pixels.
    int xc = 0;                ///< x of the leading edge, logical pixels.
    int yc = 0;                ///< y of the chord line, logical pixels.
    QPointF p_D;               ///< Pan offset, widget pixels.
    double f_div = 0.0;        ///< Not used.
    int pnt_selected = -1;     ///< Index of the selected control point, -1 for none.
    bool mousepressed = false; ///< A mouse button is held.
    double top_p = 0.0;        ///< Not used.
    double bot_p = 0.0;        ///< Not used.
    QString knot_string;       ///< Text reserved for a knot read-out.

    /// @name View and mapping
    /// @{

    /// Takes the mapping from the current size, resets view and selection, and clears the spline
    /// and the openings of the document.
    void Init_widget();

    /// The cursor's position in widget pixels.
    QPointF myAnchor();

    /// @p poly from logical pixels to chord units; empty in, empty out. Not finite
    /// where the chord length is 0.
    QPolygonF normalize_FromScreen(QPolygonF poly);

    /// Sets the zoom and pan of the view on @p painter.
    void transformPainter(QPainter& painter);

    QSize minimumSizeHint() const override; ///< Always 1024 x 768 pixels.
    QSize SizeHint() const;                 ///< The current size; does not override sizeHint().
    /// @}

    /// @name Painting
    /// Each takes the painter of the current frame.
    /// @{
    void Coor_System(QPainter* painter);          ///< Grid, axes, labels, openings.
    void Paint_BackgroundPoly(QPainter* painter); ///< The template and its points.
    void Paint_Spline(QPainter* painter);         ///< Control points, polygon and curve.

    /// One status line at @p pos (widget pixels): @p label and the texts of FindThickness for @p
    /// poly (chord units); nothing for an empty outline.
    void Paint_thickness(QPolygonF* poly, QPointF pos, QString label, QPainter* painter);

    void ShowKnotString(QPainter* painter); ///< Draws nothing; reserved for a knot read-out.
    /// @}

    /// @name Editing of control points
    /// Operations that need a selection do nothing without one. None repaints unless stated.
    /// @{

    /// Index of the first inner control point less than 8 widget pixels from lastPos;
    /// -1 for none. The two end points are never picked.
    int SelectPoint();

    /// Moves the selected point by (dx, dy) logical pixels and repaints.
    void MovePoint(int dx, int dy);

    /// Inserts a point after the selected one, half way between lastPos and the next point; after
    /// the last point it appends at @p P. A 31st point is refused with a tool tip.
    void New_Point_Insert(QPoint P);

    /// Appends a point at @p P (logical pixels), unless an inner point is selected.
    /// A 31st point is refused with a tool tip.
    void Append_New_Point(QPoint P);

    void Remove_Point(); ///< Removes the selected point and clears the selection.

    /// Moves the knot after the selected point's knot to 0.0001 above the knot before it, which
    /// makes the curve nearly a corner at the point; for points from 2 on.
    void Toggle_Conic_Control();
    /// @}

    /// @name Transformations of the whole spline
    /// @{

    /// Scales the control points about the pixel origin so that the curve is L_T wide,
    /// and evaluates it again. A width that is not finite or is below 1e-6 pixels scales nothing.
    void Normalize_Spline_Poly();

    /// If the first control point is more than 1e-5 pixels (Manhattan) away from TE, moves the
    /// spline so that it is TE, and normalises it.
    void AdjustSpline_TE();

    /// Moves the spline by @p d logical pixels and pins both end points to TE.
    void Translate_Spline(QPointF d);

    /// Scales the thickness by 1 + 0.02 @p k about the chord line and repaints.
    void ScaleFoil(double k);

    /// Rotates the control points about TE by @p angle radians, clockwise on screen.
    void RotateSpline(double angle);

    /// Replaces the spline by a symmetric section of ten control points.
    void Generate_symetric_spline();
    /// @}

    /// @name Export
    /// @{

    /// Writes every ninth point of the curve as a coordinate table to @p filename,
    /// headed by that name; does nothing for an empty name. table_saved() gives the outcome.
    void Save_airfoil_table(QString filename);

    /// Whether the last Save_airfoil_table() with a non-empty name wrote every byte.
    bool table_saved() const;
    /// @}

    /// @name Handlers
    /// @{
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    /// @}

public slots:
    void repaint_opened_spline();            ///< Evaluates the curve and repaints.
    void Action_From_Menu(QPoint P, int m);  ///< Runs entry @p m of the context menu.
    void ShowContextMenu(const QPoint& pos); ///< Runs the context menu at @p pos, widget pixels.

private:
    ChordMapping mapping() const;
    View view() const;
    int selected_point() const;
    bool at_point_limit();
    void show_point_limit();
    void paint_cursor_position(QPainter* painter);
    void paint_chord_ticks(QPainter* painter);
    void paint_thickness_lines(QPainter* painter);
    void paint_openings(QPainter* painter);
    void paint_curve(QPainter* painter);
    void settle();
    const QPolygonF& template_outline();

    int settling_paints = 0;
    QBasicTimer tooltip_timer;
    bool saved = true;

    // What painting keeps of the template. The polygons share their data with the document's
    // template until that changes.
    QPolygonF mapped_template;
    QRect template_mapping;
    QPolygonF template_pixels;
    QPolygonF measured_template;
    QString template_results[2];
    std::unique_ptr<TemplateImage> template_image;
};

/// Draws control point @p i of @p num, its leg of the control polygon, and the ring
/// around the control point @p selected (-1 for none). @p CP in logical pixels.
void Paint_Spline_Aux(QPainter* painter, int num, int i, QPointF* CP, int selected);

/// The least distance from @p P to a vertex of @p poly; 1e18 for an empty polygon.
double Dist_Spline_Pnt(QPolygonF poly, QVector2D P);

/// Asks a question in a modal box.
/// @return 1 for OK, 0 for Cancel (the default) or a closed box
int Break_Question(QString Text, QString questionText);
