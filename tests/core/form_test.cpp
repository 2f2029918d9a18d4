#include "core/form.h"

#include "support/scripteduser.h"

#include <gtest/gtest.h>

namespace {

using core::FieldInfo;
using core::FieldKind;
using core::Notice;

constexpr FieldInfo fields_of_frost[] = {
    {"chkFrost", FieldKind::check, "Permafrost"},
    {"optModel", FieldKind::choice, "Model"},
    {"sldWeight", FieldKind::slider, "Weight", {}, "", "5"},
    {"txtLimit", FieldKind::number, "Limit", {}, "K", "0.5"},
    {"txtName", FieldKind::text, "Name"},
};

class FrostForm : public core::Form {
public:
    FrostForm() { reset_fields(); }
    std::span<const FieldInfo> fields() const override { return fields_of_frost; }
    void load(const core::Project&, const core::ModelFiles&) override { reset_fields(); }
    void save(core::Project&, core::ModelFiles&) override {}
    using Form::put;

protected:
    // Clearing the check clears the limit that hangs on it.
    std::vector<Notice> changed(std::string_view name) override {
        if (name != "chkFrost" || checked("chkFrost")) {
            return {};
        }
        put("txtLimit", "");
        return {{base::Icon::warning, "Message", "No limit."}};
    }
};

TEST(Form, begins_with_the_initial_texts) {
    const FrostForm form;
    EXPECT_EQ(form.get("chkFrost"), "0");
    EXPECT_EQ(form.get("optModel"), "0");
    EXPECT_EQ(form.get("sldWeight"), "5");
    EXPECT_EQ(form.get("txtLimit"), "0.5");
    EXPECT_EQ(form.get("txtName"), "");
}

TEST(Form, keeps_texts_as_typed_without_the_blanks_round_them) {
    FrostForm form;
    form.set("txtLimit", "  1.0E-3 K\t");
    form.set("txtName", " north  well ");
    EXPECT_EQ(form.get("txtLimit"), "1.0E-3 K");
    EXPECT_EQ(form.get("txtName"), "north  well");
}

TEST(Form, a_check_is_1_or_0_whatever_number_sets_it) {
    FrostForm form;
    for (const char* const on : {"1", "-1", " 1 "}) {
        form.set("chkFrost", on);
        EXPECT_TRUE(form.checked("chkFrost")) << on;
    }
    form.set("chkFrost", "0");
    EXPECT_EQ(form.get("chkFrost"), "0");
}

TEST(Form, a_change_applies_its_rules_and_reports_them) {
    FrostForm form;
    EXPECT_TRUE(form.set("chkFrost", "1").empty());
    EXPECT_EQ(form.get("txtLimit"), "0.5");
    const auto notices = form.set("chkFrost", "0");
    ASSERT_EQ(notices.size(), 1U);
    EXPECT_EQ(notices[0].text, "No limit.");
    EXPECT_EQ(form.get("txtLimit"), "");
}

TEST(Form, a_field_that_it_does_not_have_is_a_fault) {
    FrostForm form;
    EXPECT_THROW(form.get("txtlimit"), base::RangeFailure);
    EXPECT_THROW(form.set("txtDepth", "1"), base::RangeFailure);
    EXPECT_THROW(form.put("", "1"), base::RangeFailure);
}

TEST(Form, without_rules_of_its_own_asks_nothing_and_refuses_nothing) {
    const FrostForm form;
    support::ScriptedUser user;
    EXPECT_TRUE(form.ask(user));
    EXPECT_TRUE(form.enabled("txtLimit"));
    EXPECT_FALSE(form.check().has_value());
    EXPECT_TRUE(form.saved_notices().empty());
}

} // namespace
