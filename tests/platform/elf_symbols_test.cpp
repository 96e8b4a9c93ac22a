#include "platform/os/elf_symbols.h"

#include <elf.h>
#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstring>

#include "tests/support/temporary_directory.h"

namespace {

using kq_os::CElfSymbols;

/// Memory that ends where the process may not read on, so that one byte too many is a crash.
class CGuardedBytes {
public:
    explicit CGuardedBytes(std::size_t capacity) {
        const auto page = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
        readable_ = (capacity + page - 1) / page * page;
        size_ = readable_ + page;
        memory_ = static_cast<char *>(mmap(nullptr, size_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0));
        mprotect(memory_ + readable_, page, PROT_NONE);
    }
    CGuardedBytes(const CGuardedBytes &) = delete;
    CGuardedBytes &operator=(const CGuardedBytes &) = delete;
    ~CGuardedBytes() { munmap(memory_, size_); }

    /// A copy of the bytes that ends at the guard.
    std::string_view Put(std::string_view bytes) {
        char *start = memory_ + readable_ - bytes.size();
        std::memcpy(start, bytes.data(), bytes.size());
        return {start, bytes.size()};
    }

private:
    char *memory_ = nullptr;
    std::size_t readable_ = 0;
    std::size_t size_ = 0;
};

constexpr const char *kStyles[] = {"gnu", "sysv"};
constexpr std::string_view kProbes[] = {"Version", "Name31", "OnlyInNeeded", "NoSuchName"};

std::string Module(const char *style) { return ReadBytes(std::string(KQ_MODULE_DIR "/kq_module_") + style + ".dll"); }

TEST(ElfSymbols, ATruncatedModuleIsNoneFromTheFirstMissingSegmentByteOn) {
    for (const char *style : kStyles) {
        const std::string whole = Module(style);
        ASSERT_GT(whole.size(), 1000U);
        CGuardedBytes memory(whole.size());
        bool opened_before = false;
        for (std::size_t size = 0; size <= whole.size(); ++size) {
            CElfSymbols symbols;
            const bool opened = symbols.Open(memory.Put(std::string_view(whole).substr(0, size)));
            EXPECT_TRUE(opened || !opened_before) << style << " " << size;
            EXPECT_EQ(symbols.Exports("Version"), opened) << style << " " << size;
            opened_before = opened;
        }
        EXPECT_TRUE(opened_before);
    }
}

TEST(ElfSymbols, ADamagedByteCrashesNothing) {
    for (const char *style : kStyles) {
        std::string bytes = Module(style);
        CGuardedBytes memory(bytes.size());
        std::size_t answers = 0;
        for (char &byte : bytes) {
            const char sound = byte;
            for (const unsigned flip : {0x01U, 0x80U, 0xFFU}) {
                byte = static_cast<char>(static_cast<std::uint8_t>(sound) ^ flip);
                CElfSymbols symbols;
                symbols.Open(memory.Put(bytes));
                for (const std::string_view name : kProbes) {
                    answers += symbols.Exports(name) ? 1 : 0;
                }
            }
            byte = sound;
        }
        EXPECT_GT(answers, bytes.size()) << "most bytes play no part";
    }
}

// A library made by hand: one segment for all, the dynamic entries, the symbols, their names, the hash table.

struct TFormat32 {
    using TFileHeader = Elf32_Ehdr;
    using TSegment = Elf32_Phdr;
    using TDynamic = Elf32_Dyn;
    using TSymbol = Elf32_Sym;
    using TWord = std::uint32_t;
    static constexpr unsigned char kClass = ELFCLASS32;
};

struct TFormat64 {
    using TFileHeader = Elf64_Ehdr;
    using TSegment = Elf64_Phdr;
    using TDynamic = Elf64_Dyn;
    using TSymbol = Elf64_Sym;
    using TWord = std::uint64_t;
    static constexpr unsigned char kClass = ELFCLASS64;
};

struct TSymbolRow {
    const char *name;
    unsigned binding, type, visibility, section;
    std::uint32_t value;
    bool exported;
};

constexpr TSymbolRow kSymbols[] = {
    {"function", STB_GLOBAL, STT_FUNC, STV_DEFAULT, 1, 16, true},
    {"object", STB_GLOBAL, STT_OBJECT, STV_DEFAULT, 1, 16, true},
    {"weak", STB_WEAK, STT_FUNC, STV_DEFAULT, 1, 16, true},
    {"unique", STB_GNU_UNIQUE, STT_OBJECT, STV_DEFAULT, 1, 16, true},
    {"protected", STB_GLOBAL, STT_FUNC, STV_PROTECTED, 1, 16, true},
    {"absolute", STB_GLOBAL, STT_NOTYPE, STV_DEFAULT, SHN_ABS, 0, true},
    {"thread", STB_GLOBAL, STT_TLS, STV_DEFAULT, 1, 0, true},
    {"import", STB_GLOBAL, STT_FUNC, STV_DEFAULT, SHN_UNDEF, 0, false},
    {"import_with_value", STB_GLOBAL, STT_FUNC, STV_DEFAULT, SHN_UNDEF, 16, false},
    {"without_address", STB_GLOBAL, STT_FUNC, STV_DEFAULT, 1, 0, false},
    {"local", STB_LOCAL, STT_FUNC, STV_DEFAULT, 1, 16, false},
    {"hidden", STB_GLOBAL, STT_FUNC, STV_HIDDEN, 1, 16, false},
    {"internal", STB_GLOBAL, STT_FUNC, STV_INTERNAL, 1, 16, false},
};
constexpr std::uint32_t kSymbolCount = std::size(kSymbols) + 1;

template <typename TRecord>
void AppendRecord(std::string &bytes, const TRecord &record) {
    bytes.append(reinterpret_cast<const char *>(&record), sizeof(record));
}

/// What a case does to the library before it is put together.
struct TChange {
    unsigned char byte_order = ELFDATA2LSB;
    std::uint16_t kind = ET_DYN;
    std::uint32_t buckets = 1;
    std::uint32_t symbols = kSymbolCount;
    std::uint32_t names_cut = 0;    ///< bytes that the table of names is said to lack
    bool circle = false;            ///< the classic chain runs back into itself
    bool tables_elsewhere = false;  ///< the tables' addresses lie in no segment
};

template <typename TFormat>
std::string MakeLibrary(bool gnu_hash, const TChange &change) {
    std::string names(1, '\0');
    std::string symbols(sizeof(typename TFormat::TSymbol), '\0');
    std::string hash;
    for (const TSymbolRow &row : kSymbols) {
        typename TFormat::TSymbol symbol = {};
        symbol.st_name = static_cast<std::uint32_t>(names.size());
        symbol.st_info = static_cast<unsigned char>(ELF64_ST_INFO(row.binding, row.type));
        symbol.st_other = static_cast<unsigned char>(row.visibility);
        symbol.st_shndx = static_cast<std::uint16_t>(row.section);
        symbol.st_value = row.value;
        AppendRecord(symbols, symbol);
        names.append(row.name).push_back('\0');
    }
    if (gnu_hash) {
        for (const std::uint32_t number : {change.buckets, 1U, 1U, 5U}) {
            AppendRecord(hash, number);
        }
        AppendRecord(hash, static_cast<typename TFormat::TWord>(-1));
        AppendRecord(hash, std::uint32_t{1});
        for (const TSymbolRow &row : kSymbols) {
            std::uint32_t value = 5381;
            for (const char *at = row.name; *at != '\0'; ++at) {
                value = value * 33 + static_cast<std::uint8_t>(*at);
            }
            AppendRecord(hash, &row == std::end(kSymbols) - 1 ? value | 1U : value & ~1U);
        }
    } else {
        for (const std::uint32_t number : {change.buckets, change.symbols, 1U, 0U}) {
            AppendRecord(hash, number);
        }
        for (std::uint32_t next = 2; next <= kSymbolCount; ++next) {
            AppendRecord(hash, next < kSymbolCount ? next : change.circle ? 1U : 0U);
        }
    }

    constexpr std::uint32_t kDynamicAt = sizeof(typename TFormat::TFileHeader) + 2 * sizeof(typename TFormat::TSegment);
    constexpr std::uint32_t kDynamicSize = 5 * sizeof(typename TFormat::TDynamic);
    constexpr std::uint32_t kSymbolsAt = kDynamicAt + kDynamicSize;
    const auto names_at = static_cast<std::uint32_t>(kSymbolsAt + symbols.size());
    const auto hash_at = static_cast<std::uint32_t>(names_at + names.size());
    const auto size = static_cast<std::uint32_t>(hash_at + hash.size());
    const std::uint32_t base = 0x10000;  // where the segment is loaded

    typename TFormat::TFileHeader header = {};
    std::memcpy(header.e_ident, ELFMAG, SELFMAG);
    header.e_ident[EI_CLASS] = TFormat::kClass;
    header.e_ident[EI_DATA] = change.byte_order;
    header.e_ident[EI_VERSION] = EV_CURRENT;
    header.e_type = change.kind;
    header.e_phoff = sizeof(header);
    header.e_phentsize = sizeof(typename TFormat::TSegment);
    header.e_phnum = 2;
    std::string image;
    AppendRecord(image, header);
    typename TFormat::TSegment segment = {};
    segment.p_type = PT_LOAD;
    segment.p_vaddr = base;
    segment.p_filesz = size;
    AppendRecord(image, segment);
    segment.p_type = PT_DYNAMIC;
    segment.p_offset = kDynamicAt;
    segment.p_filesz = kDynamicSize;
    AppendRecord(image, segment);
    const std::uint32_t tables = change.tables_elsewhere ? base + size : base;
    for (const auto &[tag, value] : std::initializer_list<std::pair<int, std::uint32_t>>{
             {DT_SYMTAB, tables + kSymbolsAt},
             {DT_STRTAB, tables + names_at},
             {DT_STRSZ, static_cast<std::uint32_t>(names.size()) - change.names_cut},
             {gnu_hash ? DT_GNU_HASH : DT_HASH, tables + hash_at},
             {DT_NULL, 0}}) {
        typename TFormat::TDynamic entry = {};
        entry.d_tag = tag;
        entry.d_un.d_val = value;
        AppendRecord(image, entry);
    }
    return image + symbols + names + hash;
}

/// What is found in a library: all names that it exports, none since a table can't be used, or it isn't one at all.
enum class TFound : std::uint8_t { kAll, kNone, kNoLibrary };

TEST(ElfSymbols, AChainWithoutEndIsLeftHoweverManySymbolsAreClaimed) {
    const std::string image = MakeLibrary<TFormat32>(false, {.symbols = 0xFFFFFFFF, .circle = true});
    CElfSymbols symbols;
    symbols.Open(image);
    EXPECT_FALSE(symbols.Exports("absent"));
}

TEST(ElfSymbols, SoundAndHostileLibrariesOfBothWidthsAndHashes) {
    struct TRow {
        TFound found;
        TChange change;
        const char *what;
    };
    for (const TRow &row : {TRow{TFound::kAll, {}, "sound"},
                            {TFound::kAll, {.circle = true}, "a chain without end"},
                            {TFound::kNone, {.buckets = 0}, "no bucket"},
                            {TFound::kNone, {.buckets = 0xFFFFFFFF}, "buckets beyond the file"},
                            {TFound::kNoLibrary, {.names_cut = 0xFFFFFF00}, "names beyond the file"},
                            {TFound::kNoLibrary, {.tables_elsewhere = true}, "tables that no segment brings"},
                            {TFound::kNoLibrary, {.byte_order = ELFDATA2MSB}, "the other byte order"},
                            {TFound::kNoLibrary, {.kind = ET_REL}, "an object file"}}) {
        for (const bool wide : {false, true}) {
            for (const bool gnu_hash : {false, true}) {
                const std::string image =
                    wide ? MakeLibrary<TFormat64>(gnu_hash, row.change) : MakeLibrary<TFormat32>(gnu_hash, row.change);
                CGuardedBytes memory(image.size());
                CElfSymbols symbols;
                EXPECT_EQ(symbols.Open(memory.Put(image)), row.found != TFound::kNoLibrary) << row.what;
                for (const TSymbolRow &symbol : kSymbols) {
                    EXPECT_EQ(symbols.Exports(symbol.name), symbol.exported && row.found == TFound::kAll)
                        << row.what << (wide ? " 64 " : " 32 ") << (gnu_hash ? " gnu " : " classic ") << symbol.name;
                }
                EXPECT_FALSE(symbols.Exports("absent"));
            }
        }
    }
}

}  // namespace
