// Pictures of the window, for those who judge how it looks: kqconf_shots FOLDER [light|dark|contrast [SCALE]]. SCALE is
// 2 for a display of 200 %.

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMainWindow>
#include <QPalette>
#include <QPlainTextEdit>
#include <QStyleFactory>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeView>

#include "desktop/kqconf/start_page.h"
#include "tests/desktop/person.h"

namespace {

QPalette DarkPalette() {
    QPalette palette(QColor(0x2B, 0x2D, 0x31));
    palette.setColor(QPalette::Base, QColor(0x1E, 0x1F, 0x22));
    palette.setColor(QPalette::Text, QColor(0xDD, 0xDD, 0xDD));
    palette.setColor(QPalette::WindowText, QColor(0xDD, 0xDD, 0xDD));
    palette.setColor(QPalette::ButtonText, QColor(0xDD, 0xDD, 0xDD));
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x80, 0xD0));
    palette.setColor(QPalette::Link, QColor(0x6A, 0xB0, 0xF3));
    palette.setColor(QPalette::PlaceholderText, QColor(0x88, 0x88, 0x88));
    return palette;
}

/// White and yellow on black, as those choose who see little.
QPalette ContrastPalette() {
    QPalette palette(Qt::black);
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText, QPalette::ButtonText}) {
        palette.setColor(role, Qt::white);
    }
    palette.setColor(QPalette::Base, Qt::black);
    palette.setColor(QPalette::Highlight, Qt::yellow);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::Link, Qt::yellow);
    palette.setColor(QPalette::PlaceholderText, QColor(0xCC, 0xCC, 0xCC));
    return palette;
}

/// Takes one picture of each kind of dialog that an action brings up, and closes those that wait for the person.
void ShootDialogs(const QString &out, CPerson &person, const std::function<void()> &action) {
    QTimer timer;
    int looks = 0;
    QStringList taken;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&] {
        QWidget *dialog = QApplication::activeModalWidget();
        if (dialog == nullptr || ++looks % 20 != 0) {
            return;
        }
        const bool waits =
            dialog->findChild<QTreeView *>() != nullptr || dialog->findChild<QPlainTextEdit *>() != nullptr;
        const QString kind = waits ? QStringLiteral("shown") : QStringLiteral("runs");
        const QString name =
            QStringLiteral("dialog-%1-%2").arg(dialog->windowTitle().remove(QStringLiteral("[*]")), kind);
        if (!taken.contains(name)) {
            taken.append(name);
            person.Shoot(QStringLiteral("%1/%2.png").arg(out, name));
        }
        if (waits) {
            dialog->close();
        }
    });
    timer.start(30);
    action();
    person.Settle();
}

}  // namespace

int main(int argc, char **argv) {
    const QTemporaryDir screen;
    UseScreenOf(screen.path(), 1600, 1200, argc > 3 ? QByteArray(argv[3]).toInt() : 1);
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    const QString out = QApplication::arguments().value(1);
    const QString look = QApplication::arguments().value(2);
    if (look == QStringLiteral("dark")) {
        QApplication::setPalette(DarkPalette());
    } else if (look == QStringLiteral("contrast")) {
        QApplication::setPalette(ContrastPalette());
    }
    QDir().mkpath(out);
    // Message boxes go by themselves; each leaves a picture there.
    qputenv("KQ_PICTURES", out.toLocal8Bit());
    const QString examples = QStringLiteral(KQ_SOURCE_DIR "/examples/");
    CPerson person;
    person.Answer({QStringLiteral("Ano"), QStringLiteral("Ano")});
    if (out.isEmpty() || !person.Open(examples + QStringLiteral("modbus"), QStringLiteral("modbus.par"))) {
        return 1;
    }
    const auto shoot = [&person, &out](const char *name) {
        person.Settle();
        person.Shoot(QStringLiteral("%1/%2.png").arg(out, QLatin1String(name)));
    };
    person.Main().resize(960, 680);
    shoot("01-opened");
    person.ClickCell(person.Sheet(), QStringLiteral("Line1"), 0);
    person.Press(Qt::Key_Right);
    person.ClickCell(person.Sheet(), QStringLiteral("Druh linky"), 1);
    person.Press(Qt::Key_F2);
    shoot("02-list-editor");
    person.Press(Qt::Key_Escape);
    person.Sheet().expandAll();
    person.ClickCell(person.Sheet(), QStringLiteral("Rychlost"), 1);
    person.Press(Qt::Key_F2);
    shoot("03-all-open");
    person.Press(Qt::Key_Escape);
    person.ClickCell(person.Sheet(), QStringLiteral("IP"), 1);
    shoot("03-dim");
    person.Sheet().scrollToBottom();
    shoot("04-grid");
    person.Main().resize(500, 340);
    shoot("04-small");
    person.Main().resize(1500, 1000);
    shoot("04-large");
    person.Main().resize(960, 680);
    person.Press(Qt::Key_F1, Qt::ControlModifier);
    person.Press(Qt::Key_F, Qt::ControlModifier);
    person.Type(QStringLiteral("boiler"));
    person.Press(Qt::Key_Return);
    shoot("05-found");
    person.Press(Qt::Key_Escape);
    person.Press(Qt::Key_2, Qt::ControlModifier);
    shoot("06-text");
    person.Press(Qt::Key_H, Qt::ControlModifier);
    shoot("07-replace");
    person.Press(Qt::Key_Escape);
    person.End();
    person.Open(examples + QStringLiteral("modbus"), QStringLiteral("modbus_errors.par"), QStringLiteral("modbus.pdt"),
                QStringLiteral("modbus.dmf"));
    person.Main().resize(960, 680);
    person.Press(Qt::Key_1, Qt::ControlModifier);
    person.Press(Qt::Key_F8);
    shoot("08-errors");
    person.Main().resize(520, 380);
    shoot("09-small");
    person.Answer({QStringLiteral("Ne")});
    person.CloseAndRun();
    person.End();

    person.Open(examples + QStringLiteral("meters"), QStringLiteral("meters.par"));
    person.Main().resize(960, 680);
    person.Press(Qt::Key_1, Qt::ControlModifier);
    person.Sheet().expandAll();
    shoot("10-meters");
    ShootDialogs(out, person, [&person] { person.Frame().Safety().ShowSavedChanges(); });
    QFile(person.Path(QStringLiteral("meters.par"))).open(QFile::WriteOnly | QFile::Truncate);
    QTest::qWait(1300);
    shoot("11-changed-by-others");
    person.End();

    person.Open(QStringLiteral(KQ_BINARY_DIR "/examples/simulator"), QStringLiteral("simulator.par"));
    person.Main().resize(960, 680);
    person.Press(Qt::Key_1, Qt::ControlModifier);
    shoot("12-simulator");
    QTimer::singleShot(0, &person.Main(), [&person] { person.Press(Qt::Key_D, Qt::ControlModifier); });
    ShootDialogs(out, person, [&person] {
        int rounds = 0;
        person.RunUntil([&rounds] { return ++rounds > 60 && QApplication::activeModalWidget() == nullptr; });
    });
    person.End();
    kq_desktop::CStartPage start;
    start.show();
    QApplication::processEvents();
    start.grab().save(out + QStringLiteral("/13-start.png"));
    return 0;
}
