// Pictures of the window, for those who judge how it looks: kqconf_shots FOLDER.

#include <QApplication>
#include <QDir>
#include <QMainWindow>
#include <QTreeView>

#include "tests/desktop/person.h"

int main(int argc, char **argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const QString out = QApplication::arguments().value(1);
    QDir().mkpath(out);
    const QString examples = QStringLiteral(KQ_SOURCE_DIR "/examples/");
    CPerson person;
    if (out.isEmpty() || !person.Open(examples + QStringLiteral("modbus"), QStringLiteral("modbus.par"))) {
        return 1;
    }
    const auto shoot = [&person, &out](const char *name) {
        person.Shoot(QStringLiteral("%1/%2.png").arg(out, QLatin1String(name)));
    };
    person.Main().resize(960, 680);
    shoot("01-opened");
    person.ClickCell(person.Sheet(), QStringLiteral("Line1"), 0);
    person.Press(Qt::Key_Right);
    person.Settle();
    shoot("02-section");
    person.Sheet().expandAll();
    shoot("03-all");
    person.ClickCell(person.Sheet(), QStringLiteral("Type"), 1);
    person.Press(Qt::Key_F2);
    shoot("04-editor");
    person.Press(Qt::Key_Escape);
    person.Window().Tabs().UserActivate(CConfiguratorWindow::kTextTab);
    shoot("05-text");
    person.End();
    person.Open(examples + QStringLiteral("modbus"), QStringLiteral("modbus_errors.par"));
    person.Main().resize(960, 680);
    shoot("06-errors");
    return 0;
}
