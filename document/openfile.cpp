// SPDX-FileCopyrightText: Aerolith developers
// Spline files and the file dialogs.
#include "document/openfile.h"

#include "document/savefile.h"

#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>

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
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_4_6);
    stream << *p;
    return write_file(fileName, bytes) ? 1 : 0;
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
    QFile file(fileName);
    // Opening a pipe would wait for its writer, and a device may never end. As with any
    // other file that does not open, the reading goes on and finds nothing.
    if (!info.isFile() || !file.open(QIODevice::ReadOnly))
        *p = *outdata;
    QDataStream stream(&file);
    stream.setFloatingPointPrecision(stream.floatingPointPrecision());
    stream.setVersion(QDataStream::Qt_4_6);
    stream >> *outdata;
    file.close();
    *p = *outdata;
    return 1;
}
