#include "platform/base/file_error.h"

#include <cerrno>
#include <string_view>

#include "platform/base/code_page.h"

namespace kq_base {

using namespace literals;

namespace {

struct TErrorText {
    int error_number;
    std::string_view text;
};

constexpr TErrorText kTexts[] = {
    {ENOENT, "Soubor neexistuje"_cp},
    {EISDIR, "Je to adresář, ne soubor"_cp},
    {ENOTDIR, "Část cesty není adresář"_cp},
    {EACCES, "Přístup odepřen"_cp},
    {EPERM, "Přístup odepřen"_cp},
    {EROFS, "Disk je jen pro čtení"_cp},
    {ENOSPC, "Disk je plný"_cp},
    {EDQUOT, "Je vyčerpán prostor přidělený na disku"_cp},
    {EFBIG, "Soubor je příliš velký"_cp},
    {EOVERFLOW, "Soubor je příliš velký"_cp},
    {EIO, "Chyba při čtení nebo zápisu na disk"_cp},
    {ENAMETOOLONG, "Název souboru je příliš dlouhý"_cp},
    {ELOOP, "Symbolické odkazy tvoří kruh"_cp},
    {EBUSY, "Soubor používá jiný program"_cp},
    {ETXTBSY, "Soubor používá jiný program"_cp},
    {EMFILE, "Je otevřeno příliš mnoho souborů"_cp},
    {ENFILE, "Je otevřeno příliš mnoho souborů"_cp},
    {ENXIO, "Na druhé straně roury nikdo není"_cp},
    {EPIPE, "Na druhé straně roury nikdo není"_cp},
    {ENOMEM, "Nedostatek paměti"_cp},
    {kErrorNoDirectory, "Adresář neexistuje"_cp},
    {kErrorNotAFile, "Není to obyčejný soubor"_cp},
};

}  // namespace

std::string FileErrorText(int error_number) {
    for (const TErrorText &entry : kTexts) {
        if (entry.error_number == error_number) {
            return std::string(entry.text);
        }
    }
    return std::string("Chyba systému "_cp) + std::to_string(error_number);
}

}  // namespace kq_base
