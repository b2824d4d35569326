// SPDX-FileCopyrightText: Aerolith developers
// The main window: menus, tool buttons, openings and the table pane.
#pragma once

#include "document/openfile.h"
#include "document/parastruct.h"

#include "ui_mainwindow.h"

#include <QMainWindow>
#include <QPolygonF>
#include <QString>
#include <QTextEdit>

/// The only window. Its slots turn menu entries and buttons into calls to the editor, the file
/// dialogs and the document; those named on_<object>_<signal> are connected by name.
class MainWindow : public QMainWindow, public Ui::main_window {
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);

    ParaStruct* p;           ///< The document.
    myOpenFile* opf;         ///< Dialogs and spline files, owned as a child.
    QTextEdit TabletextEdit; ///< Never shown; the table pane is tableEdit.

    /// Stores @p fileName in the spline and writes the spline there; does nothing for an empty
    /// name.
    void JustSaveSplineFile(QString fileName);

    void About(); ///< Shows the About box.

    /// Lists @p poly (chord units) in the table pane.
    void Write_BaseTable(QPolygonF poly);

    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

signals:
    void repaint_all();
    void to_repaint_opened_spline();

public slots:
    void on_actionExit_triggered();
    void setupEditO1_O2(); ///< Shows the document's openings in the fields.
    void change_O1_O2();   ///< Stores both fields as the document's openings.
    void on_plusButton_pressed();
    void on_minusButton_pressed();
    void on_actionOpen_backround_template_triggered();
    void on_actionOpen_foil_spline_triggered();
    void on_actionSave_as_table_triggered();
    void on_actionSave_as_spline_file_triggered();
    void on_O1Edit_editingFinished();
    void on_O2Edit_editingFinished();
    void on_rotplusButton_clicked();
    void on_rotminusButton_clicked();
    void on_symetriclButton_clicked();
    void on_actionAbout_program_triggered();
    void on_refreshButton_clicked();

private:
    // Makes leaving a field store only what the user typed, not what the program has set.
    void mark_openings_unedited();

    // Gives the window a light background where the desktop's is too dark for the drawing.
    void keep_ground_light();

    // Writes the spline as a table, and reports a failure in a message box.
    void save_table(const QString& name);

    // Gives the labels of the fields the largest font in which their texts are not cut off.
    void fit_labels();
};
