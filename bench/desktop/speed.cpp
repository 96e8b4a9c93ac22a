// How fast the window is: kqconf_speed prints times and memory of what people wait for.

#include <malloc.h>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTest>
#include <QTreeView>
#include <cstdio>

#include "tests/desktop/person.h"

namespace {

constexpr int kKeys = 100000;
constexpr int kTextMegabytes = 10;

double Megabytes() { return static_cast<double>(mallinfo2().uordblks) / 1e6; }

double Milliseconds(const QElapsedTimer &timer) { return static_cast<double>(timer.nsecsElapsed()) / 1e6; }

void Write(const QString &path, const QByteArray &text) {
    QFile file(path);
    if (file.open(QFile::WriteOnly)) {
        file.write(text);
    }
}

/// A section with many keys, each of which has its own table below it.
void MeasureManyKeys() {
    CPerson person;
    QByteArray par = "[Points]\n";
    for (int key = 0; key < kKeys; ++key) {
        par += "  Point" + QByteArray::number(key) + " = 1, x, A\n";
    }
    Write(person.Path(QStringLiteral("many.pdt")),
          "no_channels;\ndef_section name = 'Points'; def_key name = 'Point' + number; multiple; label = 'Point';"
          " par = number { label = 'Low' }; par = string { label = 'Name' };"
          " par = options { option = 'A'; option = 'B' }; end_key"
          " def_key name = 'Flag'; par = number; end_key end_section\n");
    Write(person.Path(QStringLiteral("many.par")), par);
    Write(person.Path(QStringLiteral("many.dmf")), "");
    if (!person.Reopen(QStringLiteral("many.par"))) {
        std::puts("the large file couldn't be opened");
        return;
    }
    person.Press(Qt::Key_2, Qt::ControlModifier);
    QElapsedTimer timer;
    timer.start();
    if (!person.Window().Tabs().UserActivate(CConfiguratorWindow::kSheetTab)) {
        std::puts("the large file has mistakes");
        return;
    }
    const double translated = Milliseconds(timer);
    const double before = Megabytes();
    timer.restart();
    person.Sheet().expand(person.Sheet().model()->index(0, 0));
    person.Main().grab();
    const double painted = Milliseconds(timer);
    QScrollBar *bar = person.Sheet().verticalScrollBar();
    double slowest = 0;
    int frames = 0;
    for (int at = 0; at <= bar->maximum(); at += qMax(bar->maximum() / 300, 1), ++frames) {
        timer.restart();
        bar->setValue(at);
        person.Sheet().viewport()->grab();
        slowest = qMax(slowest, Milliseconds(timer));
    }
    std::printf(
        "%d keys: translated in %.0f ms, then opened and painted in %.0f ms; %d frames of scrolling, the slowest "
        "%.1f ms; %.0f bytes a key\n",
        kKeys, translated, painted, frames, slowest, (Megabytes() - before) * 1e6 / kKeys);
}

void MeasureText() {
    CPerson person;
    if (!person.Open(QStringLiteral(KQ_SOURCE_DIR "/examples/modbus"), QStringLiteral("modbus.par"))) {
        return;
    }
    person.Press(Qt::Key_2, Qt::ControlModifier);
    std::string text;
    while (text.size() < std::size_t{kTextMegabytes} * 1000000U) {
        text += "  Block  = HOLDING, 1000, 31, 31, UINT32, R, 60000\n";
    }
    QElapsedTimer timer;
    timer.start();
    person.Window().ParView().UserReplaceAt(0, person.Window().ParView().Text().size(), text);
    person.Main().grab();
    const double shown = Milliseconds(timer);
    double slowest = 0;
    double sum = 0;
    constexpr int kTyped = 50;
    person.Window().ParView().SetLineIndex(100000, 3);
    person.Window().ParView().FitCursor();
    person.Settle();
    for (int key = 0; key < kTyped; ++key) {
        timer.restart();
        QTest::keyClick(&person.Text(), Qt::Key_A);
        ProcessEvents();
        person.Text().viewport()->grab();
        const double took = Milliseconds(timer);
        slowest = qMax(slowest, took);
        sum += took;
    }
    std::printf("text of %d MB: shown in %.0f ms; a key takes %.1f ms, the slowest %.1f ms\n", kTextMegabytes, shown,
                sum / kTyped, slowest);
}

}  // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QTemporaryDir state;
    qputenv("XDG_STATE_HOME", state.path().toLocal8Bit());
    QElapsedTimer timer;
    timer.start();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    {
        CPerson person;
        person.Open(QStringLiteral(KQ_SOURCE_DIR "/examples/modbus"), QStringLiteral("modbus.par"));
        person.Main().grab();
        std::printf("modbus: %.0f ms from main() to the first painted window\n", Milliseconds(timer));
    }
    MeasureManyKeys();
    MeasureText();
    return 0;
}
