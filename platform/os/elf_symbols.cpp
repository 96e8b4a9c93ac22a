// The loader sees a library through its program headers: the loadable segments say where in the file an address lies,
// the dynamic segment gives the addresses of the symbols, their names and the hash table. Section headers play no part;
// a stripped file may lack them. Every offset that the file names is checked against its size before it is read.

#include "platform/os/elf_symbols.h"

#include <elf.h>

#include <bit>
#include <cstring>

namespace kq_os {

static_assert(std::endian::native == std::endian::little, "records are copied from the file as they are");

namespace {

struct TFormat32 {
    using TFileHeader = Elf32_Ehdr;
    using TSegment = Elf32_Phdr;
    using TDynamic = Elf32_Dyn;
    using TSymbol = Elf32_Sym;
    using TWord = std::uint32_t;
};

struct TFormat64 {
    using TFileHeader = Elf64_Ehdr;
    using TSegment = Elf64_Phdr;
    using TDynamic = Elf64_Dyn;
    using TSymbol = Elf64_Sym;
    using TWord = std::uint64_t;
};

/// Copies a record out of the image; false if it doesn't lie in it whole.
template <typename TRecord>
bool ReadAt(std::string_view image, std::uint64_t offset, TRecord &record) {
    if (offset > image.size() || image.size() - offset < sizeof(TRecord)) {
        return false;
    }
    std::memcpy(&record, image.data() + offset, sizeof(TRecord));
    return true;
}

/// A record of an array; false also if its offset can't be told in 64 bits.
template <typename TRecord>
bool ReadElement(std::string_view image, std::uint64_t array, std::uint64_t index, TRecord &record) {
    return index < image.size() && array <= image.size() && ReadAt(image, array + index * sizeof(TRecord), record);
}

/// What the dynamic segment says, as addresses; 0 is absent.
struct TDynamicTables {
    std::uint64_t symbols = 0;
    std::uint64_t strings = 0;
    std::uint64_t strings_size = 0;
    std::uint64_t gnu_hash = 0;
    std::uint64_t classic_hash = 0;

    void Take(std::int64_t tag, std::uint64_t value) {
        switch (tag) {
            case DT_SYMTAB:
                symbols = value;
                break;
            case DT_STRTAB:
                strings = value;
                break;
            case DT_STRSZ:
                strings_size = value;
                break;
            case DT_GNU_HASH:
                gnu_hash = value;
                break;
            case DT_HASH:
                classic_hash = value;
                break;
            default:
                break;
        }
    }
};

/// The program headers of a file.
template <typename TFormat>
class CSegments {
public:
    using TSegment = typename TFormat::TSegment;

    /// False if the headers or a segment they describe reach beyond the file, which the loader wouldn't survive, or if
    /// there is no dynamic segment.
    bool Open(std::string_view image, std::uint64_t at, std::uint32_t count) {
        image_ = image;
        at_ = at;
        count_ = count;
        bool dynamic_found = false;
        TSegment segment = {};
        for (std::uint32_t index = 0; index < count_; ++index) {
            if (!ReadElement(image_, at_, index, segment)) {
                return false;
            }
            if (segment.p_type != PT_LOAD && segment.p_type != PT_DYNAMIC) {
                continue;
            }
            if (segment.p_offset > image_.size() || segment.p_filesz > image_.size() - segment.p_offset) {
                return false;
            }
            if (segment.p_type == PT_DYNAMIC) {
                dynamic_ = segment;
                dynamic_found = true;
            }
        }
        return dynamic_found;
    }

    /// The file offset of an address; false if no loadable segment brings it from the file.
    bool Locate(std::uint64_t address, std::uint64_t &offset) const {
        TSegment segment = {};
        for (std::uint32_t index = 0; index < count_; ++index) {
            if (ReadElement(image_, at_, index, segment) && segment.p_type == PT_LOAD && address >= segment.p_vaddr &&
                address - segment.p_vaddr < segment.p_filesz) {
                offset = segment.p_offset + (address - segment.p_vaddr);
                return true;
            }
        }
        return false;
    }

    TDynamicTables ReadDynamic() const {
        TDynamicTables tables;
        typename TFormat::TDynamic entry = {};
        const std::uint64_t count = dynamic_.p_filesz / sizeof(entry);
        for (std::uint64_t index = 0; index < count; ++index) {
            if (!ReadElement(image_, dynamic_.p_offset, index, entry) || entry.d_tag == DT_NULL) {
                break;
            }
            tables.Take(entry.d_tag, entry.d_un.d_val);
        }
        return tables;
    }

private:
    std::string_view image_;
    std::uint64_t at_ = 0;
    std::uint32_t count_ = 0;
    TSegment dynamic_ = {};
};

std::uint32_t GnuHash(std::string_view name) {
    std::uint32_t hash = 5381;
    for (const char character : name) {
        hash = hash * 33 + static_cast<std::uint8_t>(character);
    }
    return hash;
}

std::uint32_t ClassicHash(std::string_view name) {
    std::uint32_t hash = 0;
    for (const char character : name) {
        hash = (hash << 4U) + static_cast<std::uint8_t>(character);
        hash ^= (hash >> 24U) & 0xF0U;
        hash &= 0x0FFFFFFFU;
    }
    return hash;
}

}  // namespace

bool CElfSymbols::Open(std::string_view image) {
    image_ = image;
    hash_ = THash::kNone;
    unsigned char identity[EI_NIDENT] = {};
    if (!ReadAt(image, 0, identity) || std::memcmp(identity, ELFMAG, SELFMAG) != 0 ||
        identity[EI_DATA] != ELFDATA2LSB || identity[EI_VERSION] != EV_CURRENT) {
        return false;
    }
    wide_ = identity[EI_CLASS] == ELFCLASS64;
    return wide_ ? OpenAs<TFormat64>() : identity[EI_CLASS] == ELFCLASS32 && OpenAs<TFormat32>();
}

template <typename TFormat>
bool CElfSymbols::OpenAs() {
    typename TFormat::TFileHeader header = {};
    CSegments<TFormat> segments;
    if (!ReadAt(image_, 0, header) || header.e_type != ET_DYN ||
        header.e_phentsize != sizeof(typename TFormat::TSegment) ||
        !segments.Open(image_, header.e_phoff, header.e_phnum)) {
        return false;
    }
    const TDynamicTables tables = segments.ReadDynamic();
    const std::uint64_t hash_address = tables.gnu_hash != 0 ? tables.gnu_hash : tables.classic_hash;
    std::uint64_t strings_at = 0;
    if (tables.symbols == 0 || tables.strings == 0 || hash_address == 0) {
        return false;
    }
    if (!segments.Locate(hash_address, hash_at_) || !segments.Locate(tables.symbols, symbols_at_) ||
        !segments.Locate(tables.strings, strings_at) || tables.strings_size > image_.size() - strings_at) {
        return false;
    }
    strings_ = image_.substr(static_cast<std::size_t>(strings_at), static_cast<std::size_t>(tables.strings_size));
    hash_ = tables.gnu_hash != 0 ? THash::kGnu : THash::kClassic;
    return true;
}

bool CElfSymbols::ExportsFunction(std::string_view name) const {
    const std::optional<unsigned> type = TypeOf(name);
    return type && *type != STT_OBJECT && *type != STT_COMMON && *type != STT_TLS;
}

std::optional<unsigned> CElfSymbols::TypeOf(std::string_view name) const {
    switch (hash_) {
        case THash::kGnu:
            return wide_ ? FindInGnuHash<TFormat64>(name) : FindInGnuHash<TFormat32>(name);
        case THash::kClassic:
            return wide_ ? FindInClassicHash<TFormat64>(name) : FindInClassicHash<TFormat32>(name);
        case THash::kNone:
            break;
    }
    return std::nullopt;
}

// Header of four numbers, a Bloom filter of words, the buckets with the first symbol of each, and for each symbol from
// first_symbol on its hash, whose lowest bit ends the chain.
template <typename TFormat>
std::optional<unsigned> CElfSymbols::FindInGnuHash(std::string_view name) const {
    using TWord = typename TFormat::TWord;
    constexpr std::uint32_t kWordBits = sizeof(TWord) * 8;
    struct {
        std::uint32_t bucket_count;
        std::uint32_t first_symbol;
        std::uint32_t filter_size;
        std::uint32_t filter_shift;
    } head = {};
    if (!ReadAt(image_, hash_at_, head) || head.bucket_count == 0 || head.filter_size == 0 || head.filter_shift >= 32) {
        return std::nullopt;
    }
    const std::uint32_t hash = GnuHash(name);
    const std::uint64_t filter_at = hash_at_ + sizeof(head);
    TWord filter = 0;
    if (!ReadElement(image_, filter_at, hash / kWordBits % head.filter_size, filter) ||
        (filter >> (hash % kWordBits) & filter >> ((hash >> head.filter_shift) % kWordBits) & 1U) == 0) {
        return std::nullopt;
    }
    const std::uint64_t buckets_at = filter_at + std::uint64_t{head.filter_size} * sizeof(TWord);
    const std::uint64_t chains_at = buckets_at + std::uint64_t{head.bucket_count} * sizeof(std::uint32_t);
    std::uint32_t first = 0;
    if (!ReadElement(image_, buckets_at, hash % head.bucket_count, first) || first < head.first_symbol) {
        return std::nullopt;
    }
    std::uint32_t chained = 0;
    for (std::uint64_t index = first; ReadElement(image_, chains_at, index - head.first_symbol, chained); ++index) {
        if ((chained | 1U) == (hash | 1U)) {
            if (const std::optional<unsigned> type = TypeOfExported<TFormat>(index, name)) {
                return type;
            }
        }
        if ((chained & 1U) != 0) {
            break;
        }
    }
    return std::nullopt;
}

// The counts of buckets and symbols, the first symbol of each bucket, and for each symbol the next one; 0 ends a chain.
// A chain that runs in a circle is left after as many steps as there are symbols, and that many have room in the file.
template <typename TFormat>
std::optional<unsigned> CElfSymbols::FindInClassicHash(std::string_view name) const {
    struct {
        std::uint32_t bucket_count;
        std::uint32_t symbol_count;
    } head = {};
    if (!ReadAt(image_, hash_at_, head) || head.bucket_count == 0 ||
        head.symbol_count > image_.size() / sizeof(std::uint32_t)) {
        return std::nullopt;
    }
    const std::uint64_t buckets_at = hash_at_ + sizeof(head);
    const std::uint64_t chains_at = buckets_at + std::uint64_t{head.bucket_count} * sizeof(std::uint32_t);
    std::uint32_t index = 0;
    if (!ReadElement(image_, buckets_at, ClassicHash(name) % head.bucket_count, index)) {
        return std::nullopt;
    }
    for (std::uint32_t steps = 0; index != 0 && index < head.symbol_count && steps < head.symbol_count; ++steps) {
        if (const std::optional<unsigned> type = TypeOfExported<TFormat>(index, name)) {
            return type;
        }
        if (!ReadElement(image_, chains_at, index, index)) {
            break;
        }
    }
    return std::nullopt;
}

template <typename TFormat>
std::optional<unsigned> CElfSymbols::TypeOfExported(std::uint64_t index, std::string_view name) const {
    typename TFormat::TSymbol symbol = {};
    if (!ReadElement(image_, symbols_at_, index, symbol) || symbol.st_shndx == SHN_UNDEF) {
        return std::nullopt;
    }
    // Binding, type and visibility are coded alike in both widths.
    const unsigned binding = ELF64_ST_BIND(symbol.st_info);
    const unsigned type = ELF64_ST_TYPE(symbol.st_info);
    const unsigned visibility = ELF64_ST_VISIBILITY(symbol.st_other);
    const bool reachable = (binding == STB_GLOBAL || binding == STB_WEAK || binding == STB_GNU_UNIQUE) &&
                           (visibility == STV_DEFAULT || visibility == STV_PROTECTED);
    // The loader takes an address of 0 for no definition, unless the number itself is meant.
    const bool defined = symbol.st_value != 0 || symbol.st_shndx == SHN_ABS || type == STT_TLS;
    if (!reachable || !defined || symbol.st_name >= strings_.size()) {
        return std::nullopt;
    }
    const std::string_view rest = strings_.substr(symbol.st_name);
    const bool named = rest.size() > name.size() && rest[name.size()] == '\0' && rest.starts_with(name);
    return named ? std::optional(type) : std::nullopt;
}

}  // namespace kq_os
