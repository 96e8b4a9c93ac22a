/// Finding forty names that a module exports, from its file, without loading it: our reader, which goes through the
/// hash table, beside libelf, with which one goes through the symbol table. The argument is the number of symbols in
/// the module. To open the file and map it is the part that nobody can do without.
///
/// ReadChoices reads sections that choose one of a hundred modules each; its argument is the number of sections.

#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <gelf.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <unordered_set>
#include <vector>

#include "model/sheet_data.h"
#include "platform/base/bounded_text.h"
#include "platform/os/module_names.h"
#include "template/language/host_callback.h"

namespace {

constexpr std::size_t kNames = 40;

std::string ModuleOf(const benchmark::State &state) {
    return std::string(KQ_BENCH_MODULES) + "/bench_names_" + std::to_string(state.range(0)) + ".dll";
}

const std::vector<std::string> &Names() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> made;
        for (std::size_t number = 1; number <= kNames; ++number) {
            made.push_back("DriverEntry" + std::to_string(number));
        }
        return made;
    }();
    return names;
}

void Check(benchmark::State &state, std::size_t found) {
    if (found != kNames) {
        state.SkipWithError("not all names were found");
    }
}

void OpenAndMap(benchmark::State &state) {
    const std::string path = ModuleOf(state);
    for (auto _ : state) {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        struct stat status = {};
        if (file < 0 || fstat(file, &status) != 0) {
            state.SkipWithError("the module can't be opened");
            break;
        }
        const auto size = static_cast<std::size_t>(status.st_size);
        void *const memory = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        close(file);
        benchmark::DoNotOptimize(*static_cast<const volatile char *>(memory));
        munmap(memory, size);
    }
}

void OurNames(benchmark::State &state) {
    const std::string path = ModuleOf(state);
    std::size_t found = 0;
    for (auto _ : state) {
        kq_os::CModuleNames names;
        names.Open(path);
        found = 0;
        for (const std::string &name : Names()) {
            found += names.Exports(name) ? 1 : 0;
        }
    }
    Check(state, found);
}

/// How many of the names are in a section of dynamic symbols; the search ends with the last one.
std::size_t FoundInSymbols(Elf *elf, Elf_Scn *section, const GElf_Shdr &header,
                           const std::unordered_set<std::string_view> &wanted) {
    Elf_Data *const data = elf_getdata(section, nullptr);
    const std::size_t count = header.sh_size / header.sh_entsize;
    std::size_t found = 0;
    for (std::size_t at = 1; at < count && found < wanted.size(); ++at) {
        GElf_Sym symbol;
        gelf_getsym(data, static_cast<int>(at), &symbol);
        const char *const name = elf_strptr(elf, header.sh_link, symbol.st_name);
        found += symbol.st_shndx != SHN_UNDEF && name != nullptr && wanted.contains(name) ? 1 : 0;
    }
    return found;
}

void LibelfWalk(benchmark::State &state) {
    elf_version(EV_CURRENT);
    const std::string path = ModuleOf(state);
    const std::unordered_set<std::string_view> wanted(Names().begin(), Names().end());
    std::size_t found = 0;
    for (auto _ : state) {
        const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
        Elf *const elf = elf_begin(file, ELF_C_READ_MMAP, nullptr);
        found = 0;
        for (Elf_Scn *section = elf_nextscn(elf, nullptr); section != nullptr; section = elf_nextscn(elf, section)) {
            GElf_Shdr header;
            gelf_getshdr(section, &header);
            if (header.sh_type == SHT_DYNSYM) {
                found = FoundInSymbols(elf, section, header, wanted);
                break;
            }
        }
        elf_end(elf);
        close(file);
    }
    Check(state, found);
}

/// Offers one module a hundred times.
class CHost final : public CAbstractPdtIdeCallBack {
public:
    bool FindFirstModule(std::uint32_t high, char *name, std::uint32_t path_high, char *path) override {
        offered_ = 0;
        return FindNextModule(high, name, path_high, path);
    }
    bool FindNextModule(std::uint32_t /*high*/, char * /*name*/, std::uint32_t path_high, char *path) override {
        kq_base::CopyToBuffer(KQ_BENCH_MODULES "/bench_names_40.dll", path_high, path);
        return ++offered_ <= 100;
    }

private:
    int offered_ = 0;
};

void ReadChoices(benchmark::State &state) {
    CHost host;
    kq_pdt::SetHostCallback(&host);
    kq_pdt::CParSheetData data;
    kq_pdt::TCompileResult result;
    data.LoadTemplateText(
        "def_section name = 'Line' + number; multiple; def_key name = 'Module'; "
        "par = dll { procedure = 'DriverEntry40'; enable_if 1 = 2 }; end_key end_section",
        result);
    std::string text;
    for (std::int64_t section = 0; section < state.range(0); ++section) {
        text += "[Line" + std::to_string(section) + "]\nModule = bench_names_40\n";
    }
    for (auto _ : state) {
        data.ReadPar(text);
    }
    if (data.Instances().List().size() != static_cast<std::size_t>(state.range(0))) {
        state.SkipWithError("not all sections were read");
    }
    data.Done();
    kq_pdt::SetHostCallback(nullptr);
}
BENCHMARK(ReadChoices)->Arg(10)->Arg(100)->Arg(1000)->Unit(benchmark::kMicrosecond);

#define KQ_MODULES(work) BENCHMARK(work)->Arg(40)->Arg(5000)->Unit(benchmark::kMicrosecond)

KQ_MODULES(OpenAndMap);
KQ_MODULES(OurNames);
KQ_MODULES(LibelfWalk);

}  // namespace
