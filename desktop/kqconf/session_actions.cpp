// Menus and keys that the program adds to the configurator's window.

#include <QAction>
#include <QActionGroup>
#include <QFileDialog>
#include <QFileInfo>
#include <QInputDialog>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QShortcut>
#include <QTreeView>
#include <QVBoxLayout>
#include <array>
#include <utility>

#include "desktop/kqconf/find_bar.h"
#include "desktop/kqconf/session_frame.h"
#include "desktop/kqconf/text_files.h"
#include "desktop/peers/icons.h"
#include "desktop/peers/text.h"
#include "desktop/peers/text_editor.h"
#include "desktop/peers/text_peer.h"
#include "desktop/peers/window_peer.h"

namespace kq_desktop {

namespace {

/// By so much a key changes a pane's height: about a row.
constexpr int kPaneStep = 24;

QAction *Add(QMenu &menu, const char16_t *text, const QKeySequence &key, const std::function<void()> &action,
             const char *icon = nullptr) {
    QAction *added = menu.addAction(QString::fromUtf16(text));
    if (icon != nullptr) {
        added->setIcon(LoadIcon(QLatin1String(icon)));
    }
    added->setShortcut(key);
    QObject::connect(added, &QAction::triggered, &menu, action);
    return added;
}

}  // namespace

void CSessionFrame::AddMenus() {
    QMenuBar *bar = MainWindow()->menuBar();
    const QList<QAction *> menus = bar->actions();
    auto *file = new QMenu(QStringLiteral("&Soubor"), bar);
    AddFileMenu(*file);
    bar->insertMenu(menus.first(), file);
    for (QAction *menu : menus) {
        const QString text = menu->text().remove(QLatin1Char('&'));
        if (text == QStringLiteral("Úpravy")) {
            // Where people look for it: after the first two.
            bar->removeAction(menu);
            bar->insertAction(menus.at(1), menu);
            AddEditActions(*menu->menu());
        } else if (text == QStringLiteral("Nápověda")) {
            AddHelpActions(*menu->menu());
        }
    }
}

void CSessionFrame::AddFileMenu(QMenu &menu) {
    Add(
        menu, u"&Otevřít…", QKeySequence(Qt::CTRL | Qt::Key_O), [this] { AskForFile(); }, "open");
    QMenu *recent = menu.addMenu(QStringLiteral("&Nedávné"));
    QObject::connect(recent, &QMenu::aboutToShow, recent, [this, recent] { FillRecent(*recent); });
    Add(menu, u"Zobrazit &změny", QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_D),
        [this] { safety_->ShowSavedChanges(); });
    menu.addSeparator();
    AddLanguages(*menu.addMenu(QStringLiteral("&Jazyk popisů")));
    menu.addSeparator();
    Add(menu, u"&Konec", QKeySequence(Qt::CTRL | Qt::Key_Q), [this] { window_.UserClose(); });
}

void CSessionFrame::FillRecent(QMenu &menu) {
    menu.clear();
    for (const QString &path : RecentFiles()) {
        QAction *action = menu.addAction(QString(path).replace(QLatin1Char('&'), QStringLiteral("&&")));
        QObject::connect(action, &QAction::triggered, &menu, [this, path] { open_file(path); });
    }
    if (menu.isEmpty()) {
        menu.addAction(QStringLiteral("(žádné)"))->setEnabled(false);
    }
}

void CSessionFrame::AddLanguages(QMenu &menu) {
    auto *group = new QActionGroup(&menu);
    std::uint32_t number = 0;
    for (const char16_t *name : {u"Č&eština", u"&Angličtina", u"&Němčina", u"&Japonština"}) {
        QAction *language = Add(menu, name, QKeySequence(), [this, number] { change_language(number); });
        language->setCheckable(true);
        language->setChecked(number == language_);
        group->addAction(language);
        ++number;
    }
    // The choice may be taken back by a person who wants to go on with unsaved work.
    QObject::connect(&menu, &QMenu::aboutToShow, group,
                     [this, group] { group->actions().at(static_cast<qsizetype>(language_))->setChecked(true); });
}

void CSessionFrame::AddEditActions(QMenu &menu) {
    menu.addSeparator();
    Add(
        menu, u"O&dstranit řádek", QKeySequence(), [this] { window_.SheetToolBox().UserPress(cmDelete); }, "delete");
    menu.addSeparator();
    Add(
        menu, u"&Najít…", QKeySequence(Qt::CTRL | Qt::Key_F), [this] { OpenFind(false); }, "find");
    Add(menu, u"Najít &další", QKeySequence(Qt::Key_F3), [this] { find_bar_->Find(false); });
    Add(menu, u"Najít &předchozí", QKeySequence(Qt::SHIFT | Qt::Key_F3), [this] { find_bar_->Find(true); });
    Add(
        menu, u"Na&hradit…", QKeySequence(Qt::CTRL | Qt::Key_H), [this] { OpenFind(true); }, "replace");
    Add(menu, u"Přejít na řá&dek…", QKeySequence(Qt::CTRL | Qt::Key_G), [this] { GoToLine(); });
    menu.addSeparator();
    Add(
        menu, u"Další &hlášení nebo problém", QKeySequence(Qt::Key_F8), [this] { GoToNext(); }, "next");
    Add(
        menu, u"Předch&ozí hlášení", QKeySequence(Qt::SHIFT | Qt::Key_F8), [this] { GoToPrevious(); }, "previous");
    menu.addSeparator();
    const auto tree = [this] { return static_cast<QTreeView *>(CQtPeer::Of(&window_.Sheet())->Widget()); };
    Add(menu, u"&Rozbalit vše", QKeySequence(Qt::CTRL | Qt::Key_Plus), [tree] { tree()->expandAll(); });
    Add(menu, u"S&balit vše", QKeySequence(Qt::CTRL | Qt::Key_Minus), [tree] { tree()->collapseAll(); });
}

void CSessionFrame::AddHelpActions(QMenu &menu) {
    menu.addSeparator();
    Add(menu, u"&Klávesové zkratky", QKeySequence(Qt::CTRL | Qt::Key_F1), [this] { ShowShortcuts(); });
    Add(menu, u"&O programu", QKeySequence(), [this] { ShowAbout(); });
}

void CSessionFrame::AddKeys() {
    const auto add = [this](const QKeySequence &key, const std::function<void()> &action) {
        QObject::connect(new QShortcut(key, MainWindow()), &QShortcut::activated, MainWindow(), action);
    };
    add(QKeySequence(Qt::CTRL | Qt::Key_1), [this] { Activate(CConfiguratorWindow::kSheetTab); });
    add(QKeySequence(Qt::CTRL | Qt::Key_2), [this] { Activate(CConfiguratorWindow::kTextTab); });
    add(QKeySequence(Qt::Key_Delete), [this] {
        if (!OnText()) {
            window_.SheetToolBox().UserPress(cmDelete);
        }
    });
    // Not Ctrl+Alt: with it many window systems go to another desktop.
    add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Up), [this] { SizeLowerPane(kPaneStep); });
    add(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Down), [this] { SizeLowerPane(-kPaneStep); });
    // From one pane or notice to the next.
    add(QKeySequence(Qt::Key_F6), [this] {
        const QList<CView *> views = OnText()
                                         ? QList<CView *>{&window_.ParView(), &window_.Messages()}
                                         : QList<CView *>{&window_.Sheet(), &window_.Channels(), &window_.Messages()};
        QList<QWidget *> shown;
        for (const CView *view : views) {
            if (QWidget *widget = CQtPeer::Of(view)->Widget(); widget->isVisible()) {
                shown.append(widget);
            }
        }
        // Tab goes on among a notice's buttons.
        shown.append(notices_->FirstButtons());
        const qsizetype at = shown.indexOf(MainWindow()->focusWidget());
        if (!shown.isEmpty()) {
            shown[(at + 1) % shown.size()]->setFocus(Qt::ShortcutFocusReason);
        }
    });
}

/// The messages' pane on the text's tab and for who is in it, otherwise that of the channels.
void CSessionFrame::SizeLowerPane(int by) {
    const bool messages = OnText() || CQtPeer::Of(&window_.Messages())->Widget()->hasFocus();
    CSplitterPane &panes = messages ? window_.WindowSplitter() : window_.SheetSplitter();
    if (panes.IsPaneShown(CSplitterPane::TPane::kLower)) {
        panes.UserSplit(panes.SplitPosition() - by);
    }
}

void CSessionFrame::Activate(std::uint32_t tab) {
    LeavingTab();
    window_.Tabs().UserActivate(tab);
}

void CSessionFrame::AskForFile() {
    const QString path = QFileDialog::getOpenFileName(
        MainWindow(), QStringLiteral("Otevřít konfiguraci ovladače"),
        QFileInfo(QString::fromLocal8Bit(std::string(window_.ParPath()).c_str())).absolutePath(),
        QStringLiteral("Konfigurace ovladače (*.par *.pdt *.dll *.so *.PAR *.PDT *.DLL);;Všechny soubory (*)"));
    if (!path.isEmpty()) {
        open_file(path);
    }
}

void CSessionFrame::GoToLine() {
    if (!OnText()) {
        return;
    }
    bool chosen = false;
    const int lines = static_cast<int>(window_.ParView().LineCount());
    const int line = QInputDialog::getInt(MainWindow(), QStringLiteral("Přejít na řádek"),
                                          QStringLiteral("Číslo řádku (1 až %1):").arg(lines),
                                          static_cast<int>(window_.ParView().CursorLine()) + 1, 1, lines, 1, &chosen);
    std::size_t offset = 0;
    if (chosen && window_.ParView().FindOffset(static_cast<std::uint32_t>(line), 1, offset)) {
        window_.ParView().UserSelect(offset, offset);
        window_.ParView().FitCursor();
        window_.ParView().Select();
    }
}

void CSessionFrame::GoToNext() {
    if (OnText()) {
        MakeEvent(window_, ecKeyDown, CConfiguratorWindow::kNextMessageKey);
    } else {
        window_.UserNextProblem();
    }
}

void CSessionFrame::GoToPrevious() {
    const std::size_t count = window_.Messages().Rows().size();
    if (OnText() && count != 0) {
        const std::size_t current = window_.CurrentMessage();
        window_.Messages().UserChoose(current > 1 ? current - 1 : count);
    }
}

void CSessionFrame::AddFindBar() {
    find_bar_ = new CFindBar(
        {.find = [this](const QString &text, const CTextView::TFindOptions &options) { return Find(text, options); },
         .replace =
             [this](const QString &text, const QString &replacement, const CTextView::TFindOptions &options) {
                 CTextView &view = window_.ParView();
                 const std::size_t start = view.SelectionStart();
                 const std::size_t end = start + view.SelectionLength();
                 view.UserSelect(start, start);
                 if (view.UserFind(FromQt(text), options) && view.SelectionStart() == start &&
                     start + view.SelectionLength() == end) {
                     view.UserReplaceSelection(FromQt(replacement));
                 } else {
                     // What is selected isn't what is looked for.
                     view.UserSelect(start, end);
                 }
             },
         .replace_all =
             [this](const QString &text, const QString &replacement, const CTextView::TFindOptions &options) {
                 return window_.ParView().UserReplaceAll(FromQt(text), FromQt(replacement), options);
             },
         .closed =
             [this] {
                 if (OnText()) {
                     window_.ParView().Select();
                 } else {
                     static_cast<CView &>(window_.Sheet()).Select();
                 }
             }});
    static_cast<CWindowPeer *>(CQtPeer::Of(&window_))->Notices()->addWidget(find_bar_);
}

bool CSessionFrame::Find(const QString &text, const CTextView::TFindOptions &options) {
    if (!OnText()) {
        return window_.UserFind(FromQt(text), options.backwards);
    }
    const bool found = window_.ParView().UserFind(FromQt(text), options);
    if (found) {
        window_.ParView().FitCursor();
    }
    return found;
}

void CSessionFrame::OpenFind(bool replace) { find_bar_->Open(OnText(), replace); }

void CSessionFrame::ShowShortcuts() {
    static constexpr std::array<std::pair<const char16_t *, const char16_t *>, 28> kKeys = {{
        {u"Ctrl+1, Ctrl+2", u"karta Parametry, karta Textový editor"},
        {u"F6", u"další část okna, také upozornění"},
        {u"Ctrl+Shift+↑, Ctrl+Shift+↓", u"zvýšit a snížit dolní část okna"},
        {u"Ctrl+S", u"uložit"},
        {u"Ctrl+Enter", u"použít: uložit a uzavřít"},
        {u"Ctrl+W, Ctrl+Q", u"uzavřít"},
        {u"Ctrl+O", u"otevřít jiný soubor"},
        {u"Ctrl+Shift+D", u"zobrazit změny proti souborům"},
        {u"Ctrl+Z, Ctrl+Shift+Z", u"zpět, znovu"},
        {u"Ctrl+F, F3, Shift+F3", u"najít, další, předchozí"},
        {u"Ctrl+H", u"nahradit v textu"},
        {u"Ctrl+G", u"přejít na řádek textu"},
        {u"F8, Shift+F8", u"další a předchozí hlášení; v tabulce další řádek s problémem"},
        {u"Ctrl+D", u"vyhledat zařízení"},
        {u"Ctrl+R", u"opravit DMF podle konfigurace"},
        {u"F1", u"popis ovladače"},
        {u"Ctrl+F1", u"tento přehled"},
        {u"šipky", u"pohyb v tabulce; na názvu vpravo a vlevo rozbalí a sbalí řádek"},
        {u"F2, Enter, psaní", u"upravit buňku"},
        {u"Enter", u"potvrdit hodnotu; na názvu rozbalit a sbalit"},
        {u"Tab, Shift+Tab", u"potvrdit a přejít na další nebo předchozí buňku"},
        {u"Esc", u"zrušit úpravu"},
        {u"Alt+↓", u"otevřít seznam hodnot"},
        {u"Enter na <přidat>", u"přidat sekci nebo parametr"},
        {u"Delete", u"odstranit řádek"},
        {u"Ctrl++, Ctrl+−", u"rozbalit vše, sbalit vše"},
        {u"Ctrl+C", u"kopírovat buňku nebo hlášení"},
        {u"Ctrl+Shift+C", u"kopírovat řádek tabulky"},
    }};
    QString rows;
    for (const auto &[keys, meaning] : kKeys) {
        rows += QStringLiteral("<tr><td><b>%1</b>&nbsp;&nbsp;</td><td>%2</td></tr>")
                    .arg(QString::fromUtf16(keys).toHtmlEscaped(), QString::fromUtf16(meaning).toHtmlEscaped());
    }
    QMessageBox box(QMessageBox::NoIcon, QStringLiteral("Klávesové zkratky"),
                    QStringLiteral("<table cellspacing='2'>%1</table>").arg(rows), QMessageBox::NoButton, MainWindow());
    box.addButton(QStringLiteral("&Zavřít"), QMessageBox::AcceptRole);
    box.exec();
}

void CSessionFrame::ShowAbout() {
    QMessageBox box(QMessageBox::Information, QStringLiteral("O programu"),
                    QStringLiteral("kqconf %1").arg(QLatin1String(KQ_VERSION)), QMessageBox::NoButton, MainWindow());
    box.setInformativeText(QStringLiteral("Konfigurátor ovladačů"));
    box.addButton(QStringLiteral("&Zavřít"), QMessageBox::AcceptRole);
    box.exec();
}

}  // namespace kq_desktop
