#include "model/sheet_data.h"

#include <gtest/gtest.h>

#include "tests/support/model_session.h"

namespace {

/// Types into the first cell of a key.
void Type(CModelSession &session, std::size_t key, std::uint32_t number) {
    CModelSession::Edit(session.SheetData(), session.Key(0, key), 1, [number](kq_pdt::TCellEditor &editor) {
        editor.CountBox().SetValue(number);
        return true;
    });
}

TEST(SheetData, ModelsBesideEachOtherKeepTheirOwnChannels) {
    const std::string pdt =
        "def_section name = 'S'; var %n%; channels_group { ch_from = %n%; ch_to = %n%; type true, real;"
        " direction true, input }; "
        "def_key name = 'k'; channels; par = number { ch_number }; par = number { ch_count; ch_type = real }; end_key "
        "def_key name = 'g'; par = number { id = %n% }; end_key end_section ";
    CModelSession one;
    CModelSession other;
    const auto seen = [&] { return one.Channels() + " | " + other.Channels(); };
    ASSERT_TRUE(one.Translate(pdt, "[S]\nk = 3, 2\ng = 9")) << one.MessageLines();
    EXPECT_EQ(seen(), "*3-4 real ?; *9-9 real input | ");
    ASSERT_TRUE(other.Translate(pdt, "[S]\nk = 3, 1\ng = 7")) << other.MessageLines();
    EXPECT_EQ(seen(), "*3-4 real ?; *9-9 real input | *3-3 real ?; *7-7 real input");
    Type(one, 0, 20);
    Type(other, 1, 6);
    EXPECT_EQ(seen(), "*9-9 real input; *20-21 real ? | *3-3 real ?; *6-6 real input");
    const std::weak_ptr<kq_pdt::CSectionDef *> section = one.Section(0).Handle();
    EXPECT_TRUE(kq_pdt::CSheetEdit(one.SheetData()).RemoveSection(one.Section(0)));
    EXPECT_TRUE(section.expired()) << "what was removed lasts as long as the edit";
    one.SheetData().ClearData();
    EXPECT_EQ(seen(), " | *3-3 real ?; *6-6 real input");
    other.SheetData().ClearData();
    EXPECT_EQ(seen(), " | ");
}

}  // namespace
