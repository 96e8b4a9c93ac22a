#include "desktop/kqconf/options.h"

#include <QCommandLineParser>
#include <QLocale>
#include <cstdio>

#include "desktop/kqconf/settings_path.h"
#include "platform/view/settings.h"
#include "template/language/languages.h"

namespace kq_desktop {

namespace {

constexpr const char *kLanguageSetting = "Language";

void Print(std::FILE *stream, const QString &text) { std::fputs(text.toUtf8().constData(), stream); }

}  // namespace

std::optional<TOptions> ReadOptions(const QStringList &arguments, int &exit_code) {
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Konfigurátor ovladačů: upravuje parametry ovladače v tabulce nebo "
                       "v textu."));
    parser.addPositionalArgument(QStringLiteral("SOUBOR"),
                                 QStringLiteral("parametrický soubor, šablona nebo modul ovladače; ostatní soubory se "
                                                "hledají vedle něho pod stejným jménem"),
                                 QStringLiteral("[SOUBOR]"));
    const QCommandLineOption pdt(QStringLiteral("pdt"), QStringLiteral("šablona ovladače"), QStringLiteral("SOUBOR"));
    const QCommandLineOption dmf(QStringLiteral("dmf"), QStringLiteral("mapovací soubor"), QStringLiteral("SOUBOR"));
    const QCommandLineOption module(QStringLiteral("module"), QStringLiteral("modul ovladače"),
                                    QStringLiteral("SOUBOR"));
    const QCommandLineOption language(QStringLiteral("language"),
                                      QStringLiteral("jazyk popisů v šabloně: CZ, EN, GE nebo JP"),
                                      QStringLiteral("KÓD"));
    const QCommandLineOption modules(QStringLiteral("modules"), QStringLiteral("složka s dalšími moduly"),
                                     QStringLiteral("SLOŽKA"));
    const QCommandLineOption help({QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("ukáže tuto nápovědu"));
    const QCommandLineOption version({QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("ukáže verzi"));
    parser.addOptions({pdt, dmf, module, language, modules, help, version});
    exit_code = 2;
    if (!parser.parse(arguments)) {
        Print(stderr, QStringLiteral("kqconf: %1\n").arg(parser.errorText()));
        return std::nullopt;
    }
    if (parser.isSet(help)) {
        Print(stdout, parser.helpText());
        exit_code = 0;
        return std::nullopt;
    }
    if (parser.isSet(version)) {
        Print(stdout, QStringLiteral("kqconf %1\n").arg(QLatin1String(KQ_VERSION)));
        exit_code = 0;
        return std::nullopt;
    }
    const QStringList files = parser.positionalArguments();
    std::uint32_t number = 0;
    if (files.size() > 1) {
        Print(stderr, QStringLiteral("kqconf: zadejte jen jeden soubor\n"));
        return std::nullopt;
    }
    if (!FindLanguage(parser.value(language), number)) {
        Print(stderr, QStringLiteral("kqconf: neznámý jazyk %1\n").arg(parser.value(language)));
        return std::nullopt;
    }
    return TOptions{{files.value(0), parser.value(module), parser.value(pdt), parser.value(dmf)},
                    parser.value(language),
                    parser.value(modules)};
}

bool FindLanguage(const QString &code, std::uint32_t &language) {
    if (code.isEmpty()) {
        CSettings settings;
        if (settings.Open(kSettingsPath) && settings.ReadUnsigned(kLanguageSetting, language) &&
            language < kq_pdt::kLanguages.size()) {
            return true;
        }
        switch (QLocale::system().language()) {
            case QLocale::English:
                language = 1;
                break;
            case QLocale::German:
                language = 2;
                break;
            case QLocale::Japanese:
                language = 3;
                break;
            default:
                // The program's own texts are in Czech anyway.
                language = 0;
        }
        return true;
    }
    for (std::uint32_t number = 0; number < kq_pdt::kLanguages.size(); ++number) {
        const std::string_view known = kq_pdt::kLanguages[number];
        if (code.compare(QLatin1String(known.data(), static_cast<qsizetype>(known.size())), Qt::CaseInsensitive) == 0) {
            language = number;
            return true;
        }
    }
    return false;
}

void KeepLanguage(std::uint32_t language) {
    CSettings settings;
    settings.Create(kSettingsPath);
    settings.WriteUnsigned(kLanguageSetting, language);
}

}  // namespace kq_desktop
