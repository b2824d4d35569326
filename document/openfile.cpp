// SPDX-FileCopyrightText: Aerolith developers
// Spline files and the file dialogs.
#include "document/openfile.h"

#include "document/readfile.h"
#include "document/savefile.h"
#include "document/splinebytes.h"

#include <QByteArray>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

#include <new>

myOpenFile::myOpenFile(QObject* parent)
    : QObject(parent), mydir(QDir::homePath() + QStringLiteral("/Desktop") + airfoilDir),
      p(GetDataStruct()), outdata(GetDataStruct()) {}

QString myOpenFile::OpenFileName(QString caption, QString ext) {
    return QFileDialog::getOpenFileName(nullptr, caption, mydir,
                                        QStringLiteral("Files (") + ext + QLatin1Char(')'));
}

QString myOpenFile::DialogReadFromFile() {
    return QFileDialog::getOpenFileName(nullptr, QStringLiteral("Open airfoil"), mydir,
                                        tr("Files(*.txt *.dat)"));
}

QString myOpenFile::DialogReadSplineFromFile() {
    return QFileDialog::getOpenFileName(nullptr, QStringLiteral("Open airfoil spline (*.spl)"),
                                        mydir, tr("Files (*.spl)"));
}

QString myOpenFile::DialogWriteToFile() {
    return QFileDialog::getSaveFileName(nullptr, QStringLiteral("Save File (...as)"), mydir,
                                        tr("Files (*.txt *.dat)"));
}

QString myOpenFile::DialogWriteSplineToFile() {
    return QFileDialog::getSaveFileName(nullptr, QStringLiteral("Save Spline (.spl) (as...)"),
                                        mydir, tr("Files (*.spl)"));
}

int myOpenFile::WriteParaStream(QString fileName) {
    if (fileName.isEmpty())
        return 0;
    return write_file(fileName, spline_bytes(*p)) ? 1 : 0;
}

int myOpenFile::ReadParaStream(QString fileName) {
    if (fileName.isEmpty())
        return 0;
    const QFileInfo info(fileName);
    if (!info.exists()) {
        QMessageBox box;
        box.setTextFormat(Qt::PlainText);
        box.setText(fileName + QStringLiteral(" warning *** :file is missing "));
        box.exec();
        return 0;
    }
    // A file that cannot be read counts as empty, and every item becomes 0.
    try {
        read_spline_bytes(read_file(fileName), *outdata);
    } catch (const std::bad_alloc&) {
        read_spline_bytes(QByteArray(), *outdata);
    }
    *p = *outdata;
    return 1;
}
