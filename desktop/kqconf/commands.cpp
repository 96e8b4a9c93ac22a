#include "desktop/kqconf/commands.h"

#include <QHash>
#include <array>

#include "configurator/kq_pdt.h"

namespace kq_desktop {

QList<QKeySequence> ShortcutsOf(std::uint32_t command) {
    switch (command) {
        case cmSave:
            return {QKeySequence(Qt::CTRL | Qt::Key_S)};
        case cmApply:
            return {QKeySequence(Qt::CTRL | Qt::Key_Return)};
        case cmClose:
            return {QKeySequence(Qt::CTRL | Qt::Key_W)};
        case cmDelete:
            return {QKeySequence(Qt::Key_Delete)};
        case cmUndo:
        case cmTextUndo:
            return {QKeySequence(Qt::CTRL | Qt::Key_Z)};
        case cmRedo:
        case cmTextRedo:
            return {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)};
        case cmTextFind:
            return {QKeySequence(Qt::CTRL | Qt::Key_F)};
        case cmTextReplace:
            return {QKeySequence(Qt::CTRL | Qt::Key_H)};
        case cmSearchDevices:
            return {QKeySequence(Qt::CTRL | Qt::Key_D)};
        case cmRepairDmf:
            return {QKeySequence(Qt::CTRL | Qt::Key_R)};
        case cmDriverHelp:
            return {QKeySequence(Qt::Key_F1)};
        default:
            return {};
    }
}

QString WithMnemonic(const QString &text) {
    static const QHash<QString, QString> texts = [] {
        QHash<QString, QString> marked;
        for (const char16_t *name :
             {u"&Konfigurace", u"&Nástroje", u"Nápo&věda", u"Úp&ravy", u"&Použít", u"&Uložit", u"U&zavřít",
              u"&Vyhledat zařízení", u"&Opravit DMF podle konfigurace", u"Po&pis ovladače", u"&Zpět", u"Z&novu"}) {
            const QString mark = QString::fromUtf16(name);
            marked.insert(QString(mark).remove(QLatin1Char('&')), mark);
        }
        return marked;
    }();
    return texts.value(text, QString(text).replace(QLatin1Char('&'), QStringLiteral("&&")));
}

QString IconNameOf(std::uint32_t icon) {
    struct TName {
        std::uint32_t number;
        const char *name;
    };
    static constexpr std::array<TName, 20> kNames = {{
        {icLibrary, "library"},
        {icTextTab, "text-tab"},
        {icSheetTab, "sheet-tab"},
        {icChannels, "channels"},
        {icError, "error"},
        {icNotice, "notice"},
        {icApply, "apply"},
        {icClose, "close"},
        {icInsert, "insert"},
        {icDelete, "delete"},
        {icAdd, "add"},
        {icSearchDevices, "search-devices"},
        {icDriverHelp, "driver-help"},
        {icSave, "save"},
        {icTextNew, "new"},
        {icTextOpen, "open"},
        {icTextUndo, "undo"},
        {icTextRedo, "redo"},
        {icTextFind, "find"},
        {icTextReplace, "replace"},
    }};
    for (const TName &name : kNames) {
        if (name.number == icon) {
            return QLatin1String(name.name);
        }
    }
    return {};
}

}  // namespace kq_desktop
