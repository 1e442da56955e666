// What the library asks of its host: product, clipboard, trust, dialogs; and the units of tests.
#include <apsl/apStringEncodings.h>
#include <gtest/gtest.h>
#include <nmktoolbox/runtime.h>

#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace {

class Product : public nmkProductInfoAbs {
  public:
    using nmkProductInfoAbs::nmkProductInfoAbs;

    utString product_line_code() const override { return line_code; }
    utString product_major_version_string() const override { return "2026"; }

    utString line_code = "ABC";
};

// Counts its calls; decodes to a fixed text and reports a failure.
class CountingEncoding : public apIStringEncoding {
  public:
    apString decode(const utString&, int& status) const override {
        ++decoded;
        status = 0;
        return L"decoded";
    }
    utString encode(const apString&, int&) const override { return {}; }

    mutable int decoded = 0;
};

class Clipboard : public nmkClipboardAbs {
  public:
    CFilecoPrf get_data(const utString& format) override {
        asked_format = format;
        return {};
    }
    int put_data(const utString&, const CFilecoPrf&) override { return 0; }
    int has_data(const utString&) override { return 0; }

    utString asked_format;
};

utObserverPtr<const apIStringEncoding> observer_of(const apIStringEncoding& encoding) {
    return utObserverPtr<const apIStringEncoding>(&encoding);
}

nmkClipboardAbs* located_clipboard() {
    return utService::get_instance().locate_service<nmkClipboardAbs>(utServiceName("clipboard"),
                                                                     utServiceName());
}

std::string last_call;

int break_3() {
    last_call = "break";
    return 3;
}
int cancel_4() {
    last_call = "cancel";
    return 4;
}
void post(const char* text) { last_call = std::string("post ") + text; }
void unpost() { last_call = "unpost"; }
int progress(int number, const char* text) {
    last_call = std::string("progress ") + text;
    return number + 1;
}

class nmkDialogIndirTest : public testing::Test {
  protected:
    nmkDialogIndirTest() { remove_all(); }
    ~nmkDialogIndirTest() override { remove_all(); }

    static void remove_all() {
        nmkDialogIndir::SetFunction(nmkDIDialogBreak(), nullptr);
        nmkDialogIndir::SetFunction(nmkDIDialogBreakCancel(), nullptr);
        nmkDialogIndir::SetFunction(nmkDIPostitNotePost(), nullptr);
        nmkDialogIndir::SetFunction(nmkDIPostitNoteUnpost(), nullptr);
        nmkDialogIndir::SetFunction(nmkDIProgressDialog(), nullptr);
        last_call.clear();
    }
};

struct FactorCase {
    const char* name;
    nmkUnitsType current;
    int transform;
    int units;
    double expected;
};

std::ostream& operator<<(std::ostream& stream, const FactorCase& each) {
    return stream << each.name;
}

class nmkUtestUnitSwitcher_callback : public testing::TestWithParam<FactorCase> {
  protected:
    ~nmkUtestUnitSwitcher_callback() override {
        nmkUtestUnitSwitcher::set_units(nmkUnitsTypeMillimetres);
    }
};

constexpr nmkUnitsType mm = nmkUnitsTypeMillimetres;
constexpr nmkUnitsType inches = nmkUnitsTypeInches;

}  // namespace

TEST(nmkProductInfoAbs, is_named_product_info) {
    EXPECT_EQ(nmkProductInfoAbs::product_info_service_name().text(), "product_info");
}

TEST(nmkProductInfoAbs, converts_both_texts_by_the_chosen_encoding) {
    Product product;
    product.line_code = "caf\xc3\xa9";
    EXPECT_EQ(product.product_line_code_ap(), apString(L"caf\u00e9"));
    EXPECT_EQ(product.product_major_version_string_ap(), apString(L"2026"));
}

TEST(nmkProductInfoAbs, converts_by_the_encoding_that_it_was_given) {
    const apString1252Encoding western;
    Product product(observer_of(western));
    product.line_code = "caf\xe9";
    EXPECT_EQ(product.product_line_code_ap(), apString(L"caf\u00e9"));
}

TEST(nmkProductInfoAbs, an_empty_text_gives_an_empty_text_without_a_decoding_step) {
    const CountingEncoding encoding;
    Product product(observer_of(encoding));
    for (const utString& empty : {utString(""), utString()}) {
        product.line_code = empty;
        EXPECT_TRUE(product.product_line_code_ap().is_empty());
    }
    EXPECT_EQ(encoding.decoded, 0);
}

TEST(nmkProductInfoAbs, the_status_of_the_decoding_is_not_looked_at) {
    const CountingEncoding encoding;
    const Product product(observer_of(encoding));
    EXPECT_EQ(product.product_line_code_ap(), apString(L"decoded"));
    EXPECT_EQ(encoding.decoded, 1);
}

TEST(nmkProductInfoAbs, an_encoding_that_has_been_destroyed_gives_empty_texts) {
    auto encoding = std::make_unique<CountingEncoding>();
    const Product product(observer_of(*encoding));
    encoding.reset();
    EXPECT_TRUE(product.product_line_code_ap().is_empty());
    const Product without{utObserverPtr<const apIStringEncoding>()};
    EXPECT_TRUE(without.product_major_version_string_ap().is_empty());
}

TEST(nmkProductInfoAbs, is_located_by_its_name) {
    Product product;
    utService& registry = utService::get_instance();
    registry.register_service(nmkProductInfoAbs::product_info_service_name(), &product);
    EXPECT_EQ(
        registry.locate_service<nmkProductInfoAbs>(utServiceName("product_info"), utServiceName()),
        &product);
}

TEST(nmkClipboardAbs, is_null_when_the_host_has_no_clipboard) {
    EXPECT_EQ(located_clipboard(), nullptr);
}

TEST(nmkClipboardAbs, is_located_by_the_name_clipboard_and_asked_for_a_format) {
    Clipboard clipboard;
    utService::get_instance().register_service(utServiceName("clipboard"), &clipboard);
    ASSERT_EQ(located_clipboard(), &clipboard);
    EXPECT_FALSE(static_cast<bool>(located_clipboard()->get_data("nmt")));
    EXPECT_EQ(clipboard.asked_format, "nmt");
}

TEST(nmkTrustAbsMock, is_true_until_it_is_set_otherwise_whatever_the_path) {
    nmkTrustAbsMock mock;
    nmkTrustAbs& trust = mock;
    EXPECT_TRUE(trust.looks_ok_to_access_path(apPath()));
    mock.set_ok(false);
    EXPECT_FALSE(trust.looks_ok_to_access_path(apPath()));
    EXPECT_FALSE(trust.looks_ok_to_access_path(apPath(apString(L"/etc/passwd"))));
    mock.set_ok(true);
    EXPECT_TRUE(trust.looks_ok_to_access_path(apPath(apString(L"/etc/passwd"))));
}

TEST_F(nmkDialogIndirTest, without_functions_nothing_is_called_and_results_are_0) {
    EXPECT_EQ(nmkDialogIndir::dialog_break(), 0);
    EXPECT_EQ(nmkDialogIndir::dialog_break_and_cancel(), 0);
    EXPECT_EQ(nmkDialogIndir::progress_dialog(5, "text"), 0);
    nmkDialogIndir::postitnote_post("text");
    nmkDialogIndir::postitnote_unpost();
    EXPECT_EQ(last_call, "");
}

TEST_F(nmkDialogIndirTest, each_operation_calls_its_own_function_and_returns_the_result) {
    nmkDialogIndir::SetFunction(nmkDIDialogBreak(), break_3);
    nmkDialogIndir::SetFunction(nmkDIDialogBreakCancel(), cancel_4);
    nmkDialogIndir::SetFunction(nmkDIPostitNotePost(), post);
    nmkDialogIndir::SetFunction(nmkDIPostitNoteUnpost(), unpost);
    nmkDialogIndir::SetFunction(nmkDIProgressDialog(), progress);
    EXPECT_EQ(nmkDialogIndir::dialog_break(), 3);
    EXPECT_EQ(last_call, "break");
    EXPECT_EQ(nmkDialogIndir::dialog_break_and_cancel(), 4);
    EXPECT_EQ(last_call, "cancel");
    nmkDialogIndir::postitnote_post("note");
    EXPECT_EQ(last_call, "post note");
    nmkDialogIndir::postitnote_unpost();
    EXPECT_EQ(last_call, "unpost");
    EXPECT_EQ(nmkDialogIndir::progress_dialog(8, "half"), 9);
    EXPECT_EQ(last_call, "progress half");
}

TEST_F(nmkDialogIndirTest, setting_null_removes_the_function) {
    nmkDialogIndir::SetFunction(nmkDIDialogBreak(), break_3);
    nmkDialogIndir::SetFunction(nmkDIDialogBreak(), nullptr);
    EXPECT_EQ(nmkDialogIndir::dialog_break(), 0);
    EXPECT_EQ(last_call, "");
}

TEST_F(nmkDialogIndirTest, has_five_words_of_its_own) {
    const nmkDialogIndir dialogs;
    EXPECT_EQ(sizeof dialogs, 5 * sizeof(int));
}

TEST_P(nmkUtestUnitSwitcher_callback, returns_the_factor) {
    const FactorCase& each = GetParam();
    nmkUtestUnitSwitcher::set_units(each.current);
    EXPECT_EQ(nmkUtestUnitSwitcher::callback(static_cast<nmkUnitsUtilsTrans>(each.transform),
                                             static_cast<nmkUnitsType>(each.units), nullptr),
              each.expected);
}

INSTANTIATE_TEST_SUITE_P(
    each, nmkUtestUnitSwitcher_callback,
    testing::Values(FactorCase{"equal_millimetres_to", mm, 0, 0, 1.0},
                    FactorCase{"equal_millimetres_from", mm, 1, 0, 1.0},
                    FactorCase{"equal_inches_to", inches, 0, 1, 1.0},
                    FactorCase{"equal_inches_from", inches, 1, 1, 1.0},
                    FactorCase{"equal_units_with_an_unknown_transform", inches, 7, 1, 1.0},
                    FactorCase{"from_inches_to_current_millimetres", mm, 1, 1, 25.4},
                    FactorCase{"from_millimetres_to_current_inches", inches, 1, 0,
                               0.03937007874015748},
                    FactorCase{"current_millimetres_to_inches", mm, 0, 1, 0.03937007874015748},
                    FactorCase{"current_inches_to_millimetres", inches, 0, 0, 25.4},
                    FactorCase{"from_unknown_units", mm, 1, 5, 25.4},
                    FactorCase{"to_unknown_units", mm, 0, 5, 25.4},
                    FactorCase{"an_unknown_transform_counts_as_to", mm, 7, 1, 0.03937007874015748}),
    [](const auto& each) { return std::string(each.param.name); });

TEST(nmkUtestUnitSwitcher, serves_as_both_callbacks_of_the_units) {
    nmkUnitsUtils::set_scaling_callback(nmkUtestUnitSwitcher::callback, nullptr);
    nmkUnitsUtils::set_units_callback(nmkUtestUnitSwitcher::set_units_callback, nullptr);
    nmkUnitsUtils::set_units(nmkUnitsTypeInches);
    EXPECT_EQ(nmkUnitsUtils::get_units(), nmkUnitsTypeInches);
    EXPECT_EQ(nmkUnitsUtils::get_scale_to(nmkUnitsTypeMillimetres), 25.4);
    nmkUnitsUtils::set_units(nmkUnitsTypeMillimetres);
    EXPECT_EQ(nmkUnitsUtils::get_units(), nmkUnitsTypeMillimetres);
    EXPECT_EQ(nmkUnitsUtils::get_scale_from(nmkUnitsTypeInches), 25.4);
    nmkUnitsUtils::set_scaling_callback(nullptr, nullptr);
    nmkUnitsUtils::set_units_callback(nullptr, nullptr);
}

TEST(nmkIterTools, has_no_objects) {
    EXPECT_FALSE(std::is_default_constructible_v<nmkIterTools>);
    EXPECT_FALSE(std::is_destructible_v<nmkIterTools>);
}
