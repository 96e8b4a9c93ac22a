#include "driver/driver_entries.h"

#include "platform/os/modules.h"

namespace kq_drv {
namespace {

static_assert(std::is_same_v<KQGetInput3Entry, KQGetInput3EntryW> &&
                  std::is_same_v<KQQueryProc3Entry, KQQueryProc3EntryW>,
              "entries without texts have one form");

/// An entry's name, and where its address goes.
template <typename TForm>
struct TPlace {
    TPlace(const char *entry_name, TForm *&entry) : name(entry_name), address(entry) {}

    const char *name;
    TForm *&address;
};

/// Looks up names in the module's width; each operation is false if what must be there isn't.
class CFinder {
public:
    CFinder(void *module, bool wide, std::string &missing)
        : module_(module), suffix_(wide ? "W" : ""), missing_(missing) {}

    template <typename TForm>
    bool Optional(const char *name, TForm *&address) {
        Find(TPlace(name, address));
        return true;
    }
    template <typename TForm>
    bool Required(const char *name, TForm *&address) {
        return OneOf(TPlace(name, address));
    }
    template <typename... TForms>
    bool OneOf(TPlace<TForms>... places) {
        bool found = false;
        ((found = Find(places) || found), ...);
        if (!found) {
            ((missing_ += (missing_.empty() ? "" : ", ") + (places.name + suffix_)), ...);
        }
        return found;
    }

private:
    template <typename TForm>
    bool Find(TPlace<TForm> place) {
        const std::string name = place.name + suffix_;
        place.address = reinterpret_cast<TForm *>(kq_os::GetProcAddress(module_, name.c_str()));
        return place.address != nullptr;
    }

    void *module_;
    std::string suffix_;
    std::string &missing_;
};

/// The names in the order in which a missing one is reported.
template <typename TCharacter>
bool FindAll(CFinder find, TDriverEntries &all, TTextEntries<TCharacter> &text) {
    return find.Required("MakeDriver", all.make_driver) && find.Required("DisposeDriver", all.dispose_driver) &&
           find.OneOf(TPlace("Init", text.init), TPlace("Init3", text.init3)) &&
           find.Optional("ReadParameters", text.read_parameters) &&
           find.Optional("QueryErrorCode", text.query_error_code) &&
           find.Optional("EnumerateChannels", all.enumerate_channels) &&
           find.Optional("GetChannelDescription", text.get_channel_description) && find.Optional("Run", all.run) &&
           find.Optional("Stop", all.stop) && find.Required("Done", all.done) &&
           find.Optional("BufferInfo", all.buffer_info) && find.Optional("SetBufferAddr", all.set_buffer_addr) &&
           find.Optional("InputRequestStart", all.input_request_start) &&
           find.Required("InputRequest", all.input_request) &&
           find.Required("InputRequestCompleted", all.input_request_completed) &&
           find.Required("InputFinalized", all.input_finalized) &&
           find.Optional("InputOOBDataQuery", all.input_oob_data_query) &&
           find.Optional("OutputRequestStart", all.output_request_start) &&
           find.Required("OutputRequestCompleted", all.output_request_completed) &&
           find.Required("OutputFinalized", all.output_finalized) && find.Required("DriverProc", all.driver_proc) &&
           find.OneOf(TPlace("GetInput", all.get_input), TPlace("GetInput2", all.get_input2),
                      TPlace("GetInput3", all.get_input3)) &&
           find.OneOf(TPlace("OutputRequest", all.output_request), TPlace("OutputRequest2", all.output_request2),
                      TPlace("OutputRequest3", all.output_request3)) &&
           find.Optional("QueryProc", all.query_proc) && find.Optional("QueryProc3", all.query_proc3);
}

}  // namespace

bool FindEntries(void *module, bool wide, TDriverEntries &entries, std::string &missing) {
    missing.clear();
    const CFinder finder(module, wide, missing);
    return wide ? FindAll(finder, entries, entries.wide) : FindAll(finder, entries, entries.narrow);
}

}  // namespace kq_drv
