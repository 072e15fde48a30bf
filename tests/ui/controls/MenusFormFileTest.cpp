// SPDX-License-Identifier: MIT
// Menus in form files.

#include "kx/core/Classes.h"
#include "kx/ui/controls/Menus.h"
#include "tests/support/Cycles.h"
#include "tests/support/FormFiles.h"

#include <gtest/gtest.h>

namespace kx {
namespace {

using namespace test;

// --- Form files

class THost : public TComponent {
    KX_CLASS()

    explicit THost(TComponent* owner = nullptr) : TComponent(owner) {}
    void Open1Click(TObject*) { ++Clicks; }

    KX_FIELDS(THost, (TPopupMenu, PopupMenu1), (TMenuItem, Open1))
    int Clicks = 0;

    void GetChildren(const TGetChildProc& proc, TComponent*) override {
        for (int i = 0; i < ComponentCount(); ++i) {
            if (!Components(i)->HasParent()) {
                proc(Components(i));
            }
        }
    }
};

const TClass& THost::StaticClass() {
    static const TClassBuilder<THost> cls("THost", TComponent::StaticClass(), [](auto& c) {
        c.Method("Open1Click", &THost::Open1Click);
        c.Creatable();
    });
    return cls.Class();
}

const char FormText[] = R"(object Host: THost
  object ImageList1: TImageList
  end
  object PopupMenu1: TPopupMenu
    Images = ImageList1
    Alignment = paCenter
    object Open1: TMenuItem
      Caption = '&Open...'
      Default = True
      ImageIndex = 3
      ShortCut = 16463
      OnClick = Open1Click
    end
    object N1: TMenuItem
      Caption = '-'
    end
    object More1: TMenuItem
      Caption = 'More'
      Enabled = False
      object Radio1: TMenuItem
        Caption = 'Radio'
        Checked = True
        GroupIndex = 7
        Hint = 'short|long'
        RadioItem = True
        Visible = False
      end
    end
  end
end
)";

TEST(MenuInAFormFile, IsReadAndWritten) {
    RegisterClasses<TPopupMenu, TMenuItem, TImageList>();
    THost host;
    ReadFormOver(host, FormText);
    ASSERT_NE(host.PopupMenu1, nullptr);
    ASSERT_NE(host.Open1, nullptr);
    EXPECT_EQ(host.PopupMenu1->Items().Count(), 3);
    EXPECT_EQ(host.PopupMenu1->Alignment(), paCenter);
    EXPECT_EQ(host.PopupMenu1->Images(), host.FindComponent("ImageList1"));
    EXPECT_EQ(host.Open1->ShortCut(), ShortCut('O', scCtrl));
    EXPECT_EQ(host.Open1->Owner(), &host);
    EXPECT_EQ(host.Open1->GetParentComponent(), host.PopupMenu1);
    TMenuItem* more = host.PopupMenu1->Items()[2];
    ASSERT_EQ(more->Count(), 1);
    EXPECT_EQ(more->Items(0)->GetParentComponent(), more);
    EXPECT_EQ(more->Items(0)->GroupIndex(), 7);
    EXPECT_TRUE(more->Items(0)->Checked());
    host.Open1->Click();
    EXPECT_EQ(host.Clicks, 1);

    std::string expected;
    for (const char* c = FormText; *c; ++c) {
        expected += *c == '\n' ? std::string("\r\n") : std::string(1, *c);
    }
    EXPECT_EQ(FormTextOf(host), expected);
}

TEST(MenuInAFormFile, AThousandLivesLeaveNothingBehind) {
    RegisterClasses<TPopupMenu, TMenuItem, TImageList>();
    const auto work = [] {
        for (int i = 0; i < 100; ++i) {
            THost host;
            ReadFormOver(host, FormText);
            EXPECT_EQ(GetMenuItemCount(host.PopupMenu1->Handle()), 3);
            host.Open1->SetCaption("other");
        }
    };
    EXPECT_EQ(LeftBehind(work, TakeCensus), "");
}

} // namespace
} // namespace kx
