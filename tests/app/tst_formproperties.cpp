// SPDX-FileCopyrightText: Aerolith developers
// Properties and texts of the objects in the form of the main window.
#include "app/mainwindow.h"
#include "editor/editspline.h"
#include "support/testmain.h"
#include "windowsupport.h"

#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMetaProperty>
#include <QTest>
#include <QToolButton>

class tst_formproperties : public QObject {
    Q_OBJECT

private slots:
    void init();
    void properties_data();
    void properties();
    void every_text_is_translated();
    void translated_texts_are_shown();
};

namespace {

QString policy_text(const QSizePolicy& policy) {
    const QMetaEnum names = QMetaEnum::fromType<QSizePolicy::Policy>();
    return QStringLiteral("%1 %2 stretch %3 %4 height-for-width %5")
        .arg(QString::fromLatin1(names.valueToKey(policy.horizontalPolicy())),
             QString::fromLatin1(names.valueToKey(policy.verticalPolicy())),
             QString::number(policy.horizontalStretch()), QString::number(policy.verticalStretch()),
             QString::number(int(policy.hasHeightForWidth())));
}

QString property_text(const QObject* object, const char* name) {
    const int index = object->metaObject()->indexOfProperty(name);
    if (index < 0)
        return QStringLiteral("no such property");
    const QMetaProperty property = object->metaObject()->property(index);
    const QVariant value = property.read(object);
    if (property.isFlagType()) {
        // AlignRight and AlignTrailing are names for the same value.
        return QString::fromLatin1(property.enumerator().valueToKeys(value.toInt()))
            .replace(QStringLiteral("AlignTrailing"), QStringLiteral("AlignRight"));
    }
    if (property.isEnumType())
        return QString::fromLatin1(property.enumerator().valueToKey(value.toInt()));
    if (value.typeId() == QMetaType::QSizePolicy)
        return policy_text(value.value<QSizePolicy>());
    if (value.typeId() == QMetaType::QSize)
        return QStringLiteral("%1 x %2").arg(value.toSize().width()).arg(value.toSize().height());
    if (value.typeId() == QMetaType::QRect) {
        const QRect rect = value.toRect();
        return QStringLiteral("%1 %2 %3 %4")
            .arg(rect.x())
            .arg(rect.y())
            .arg(rect.width())
            .arg(rect.height());
    }
    return value.toString();
}

struct PropertyRow {
    const char* object;
    const char* property;
    const char* text;
};

// clang-format off
const PropertyRow property_rows[] = {
    {"main_window", "windowModality", "WindowModal"},
    {"main_window", "size", "800 x 600"},
    {"main_window", "sizePolicy", "Expanding Expanding stretch 0 0 height-for-width 0"},
    {"main_window", "minimumSize", "800 x 600"},
    {"main_window", "maximumSize", "4500 x 2500"},
    {"main_window", "mouseTracking", "true"},
    {"main_window", "focusPolicy", "NoFocus"},
    {"main_window", "contextMenuPolicy", "ActionsContextMenu"},
    {"main_window", "windowOpacity", "1"},
    {"main_window", "autoFillBackground", "false"},
    {"main_window", "styleSheet", ""},
    {"main_window", "animated", "false"},
    {"main_window", "tabShape", "Triangular"},
    {"main_window", "toolButtonStyle", "ToolButtonFollowStyle"},
    {"main_window", "unifiedTitleAndToolBarOnMac", "false"},
    {"main_window", "windowTitle", "Aerolith"},

    {"spline_widget", "sizePolicy", "Expanding Expanding stretch 0 0 height-for-width 0"},
    {"spline_widget", "minimumSize", "555 x 400"},
    {"spline_widget", "mouseTracking", "true"},
    {"spline_widget", "focusPolicy", "StrongFocus"},
    {"spline_widget", "contextMenuPolicy", "CustomContextMenu"},
    {"spline_widget", "autoFillBackground", "false"},
    {"spline_widget", "styleSheet", "background-color: rgb(243, 159, 225);"},
    {"spline_widget", "toolTip", "resfreshes knots for current spline"},

    {"O1Edit", "geometry", "50 10 51 24"},
    {"O1Edit", "alignment", "AlignRight|AlignVCenter"},
    {"O1Edit", "text", "0.00"},
    {"O1Edit", "toolTip", "start opening from LE"},
    {"O2Edit", "geometry", "50 40 51 24"},
    {"O2Edit", "alignment", "AlignRight|AlignVCenter"},
    {"O2Edit", "text", "0.00"},
    {"O2Edit", "toolTip", "end opening from LE"},
    {"label", "geometry", "10 14 34 17"},
    {"label", "text", "O-1 %"},
    {"label_2", "geometry", "10 45 34 17"},
    {"label_2", "text", "O-2 %"},

    {"splitter", "geometry", "190 50 281 27"},
    {"splitter", "orientation", "Horizontal"},
    {"plusButton", "text", "+"},
    {"plusButton", "toolTip", "scale working foil"},
    {"plusButton", "contextMenuPolicy", "NoContextMenu"},
    {"minusButton", "text", "-"},
    {"minusButton", "toolTip", "scale working foil"},
    {"minusButton", "contextMenuPolicy", "NoContextMenu"},
    {"rotplusButton", "text", "R+"},
    {"rotplusButton", "toolTip", "rotate clockwise"},
    {"rotplusButton", "contextMenuPolicy", "DefaultContextMenu"},
    {"rotminusButton", "text", "R-"},
    {"rotminusButton", "toolTip", "rotate counter-clockwise"},
    {"rotminusButton", "contextMenuPolicy", "DefaultContextMenu"},
    {"symetriclButton", "text", "S"},
    {"symetriclButton", "toolTip", "generate symetric spline"},
    {"symetriclButton", "contextMenuPolicy", "DefaultContextMenu"},
    {"refreshButton", "text", "Refresh knots"},
    {"refreshButton", "toolTip", ""},
    {"refreshButton", "contextMenuPolicy", "DefaultContextMenu"},

    {"tableEdit", "sizePolicy", "Fixed Preferred stretch 0 0 height-for-width 0"},
    {"tableEdit", "minimumSize", "141 x 400"},
    {"tableEdit", "maximumSize", "141 x 16777215"},
    {"tableEdit", "styleSheet", ""},
    {"tableEdit", "plainText", ""},

    {"menuBar", "geometry", "0 0 800 27"},
    {"menuFiles", "title", "files"},
    {"menuSave", "title", "Save"},
    {"menuAbout", "title", "About"},
    {"actionOpen_backround_template", "text", "show backround airfoil (.txt,.dat)"},
    {"actionOpen_foil_spline", "text", "open airfoil spline file (.spl)"},
    {"actionExit", "text", "exit"},
    {"actionSave_as_table", "text", "save current spline as airfoil table (.txt; .dat)"},
    {"actionSave_as_spline_file", "text", "save current spline file as spline (.spl)"},
    {"actionAbout_program", "text", "about program"},
};
// clang-format on

} // namespace

void tst_formproperties::init() {
    renew_document();
}

void tst_formproperties::properties_data() {
    QTest::addColumn<QString>("object");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("text");
    for (const PropertyRow& row : property_rows) {
        QTest::addRow("%s.%s", row.object, row.property)
            << QString::fromLatin1(row.object) << QByteArray(row.property)
            << QString::fromLatin1(row.text);
    }
}

void tst_formproperties::properties() {
    QFETCH(QString, object);
    QFETCH(QByteArray, property);
    QFETCH(QString, text);

    const MainWindow window;
    const QObject* found =
        window.objectName() == object ? &window : window.findChild<QObject*>(object);
    QVERIFY(found != nullptr);
    QCOMPARE(property_text(found, property.constData()), text);
}

void tst_formproperties::every_text_is_translated() {
    const RecordingTranslator recorder("nothing");
    const MainWindow window;

    QStringList translated;
    for (const auto& [context, text] : recorder.calls) {
        if (context == "main_window")
            translated.append(QString::fromUtf8(text));
    }
    for (const PropertyRow& row : property_rows) {
        const QByteArray property(row.property);
        const bool shown = property == "text" || property == "toolTip" || property == "title" ||
                           property == "windowTitle";
        if (shown && *row.text)
            QVERIFY2(translated.removeOne(QString::fromLatin1(row.text)), row.text);
    }
    for (const QWidget* widget : window.findChildren<QWidget*>()) {
        if (!widget->accessibleName().isEmpty())
            QVERIFY2(translated.removeOne(widget->accessibleName()),
                     qPrintable(widget->accessibleName()));
    }
    QCOMPARE(translated, QStringList());
}

void tst_formproperties::translated_texts_are_shown() {
    const RecordingTranslator recorder("main_window");
    const MainWindow window;
    QCOMPARE(window.windowTitle(), QStringLiteral("[Aerolith]"));
    QCOMPARE(window.label_2->text(), QStringLiteral("[O-2 %]"));
    QCOMPARE(window.O1Edit->text(), QStringLiteral("[0.00]"));
    QCOMPARE(window.refreshButton->text(), QStringLiteral("[Refresh knots]"));
    QCOMPARE(window.spline_widget->toolTip(),
             QStringLiteral("[resfreshes knots for current spline]"));
    QCOMPARE(window.menuSave->title(), QStringLiteral("[Save]"));
    QCOMPARE(window.actionExit->text(), QStringLiteral("[exit]"));
}

AEROLITH_TEST_MAIN(tst_formproperties)
#include "tst_formproperties.moc"
