// SPDX-License-Identifier: MIT
// Dialogs that are previewed with designed forms that stand on others.

#include "WindowFixture.h"

#include "kx/design/KxServices.h"
#include "kx/frame/KxCustDlgParams.h"
#include "kx/opensave/KxOpenDlg.h"
#include "kx/ui/forms/Frames.h"

#include <algorithm>

namespace kx::test {
namespace {

/// A frame that makes an edit and a button.
class TStampFrame : public TFrame {
    KX_CLASS()
    explicit TStampFrame(TComponent* owner = nullptr) : TFrame(owner) {
        const auto add = [this](TControl* control, const char* name, int left) {
            control->SetName(name);
            control->SetParent(this);
            control->SetBounds(left, 4, 60, 22);
        };
        add(new TEdit(this), "StampEdit", 4);
        add(new TButton(this), "StampButton", 70);
    }
};
const TClass& TStampFrame::StaticClass() {
    static const TClassBuilder<TStampFrame> cls("TStampFrame", TFrame::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

constexpr const char* BaseFile = "object BaseForm: TBaseForm\n"
                                 "  Left = 10\n"
                                 "  Top = 20\n"
                                 "  ClientHeight = 90\n"
                                 "  ClientWidth = 140\n"
                                 "  Color = clAqua\n"
                                 "  object Bar: TPanel\n"
                                 "    Left = 0\n"
                                 "    Top = 50\n"
                                 "    Width = 140\n"
                                 "    Height = 40\n"
                                 "    TabOrder = 0\n"
                                 "    object Ok: TButton\n"
                                 "      Left = 8\n"
                                 "      Top = 8\n"
                                 "      Width = 75\n"
                                 "      Height = 25\n"
                                 "      Caption = 'OK'\n"
                                 "      TabOrder = 0\n"
                                 "      OnClick = OkClick\n"
                                 "    end\n"
                                 "  end\n"
                                 "  inline Stamp: TStampFrame\n"
                                 "    Left = 0\n"
                                 "    Top = 0\n"
                                 "    Width = 140\n"
                                 "    Height = 30\n"
                                 "    TabOrder = 1\n"
                                 "    inherited StampEdit: TEdit\n"
                                 "      Text = 'base'\n"
                                 "    end\n"
                                 "  end\n"
                                 "end\n";
constexpr const char* MiddleFile = "inherited MiddleForm: TMiddleForm\n"
                                   "  Color = clLime\n"
                                   "  inherited Bar: TPanel\n"
                                   "    inherited Ok: TButton\n"
                                   "      Caption = 'Send'\n"
                                   "    end\n"
                                   "  end\n"
                                   "  object Note: TLabel\n"
                                   "    Left = 8\n"
                                   "    Top = 32\n"
                                   "    Width = 23\n"
                                   "    Height = 13\n"
                                   "    Caption = 'Note'\n"
                                   "  end\n"
                                   "end\n";
constexpr const char* LastFile = "inherited LastForm: TLastForm\n"
                                 "  inherited Note: TLabel\n"
                                 "    Caption = 'Last'\n"
                                 "  end\n"
                                 "  inherited Stamp: TStampFrame\n"
                                 "    inherited StampButton: TButton\n"
                                 "      Caption = 'Stamp'\n"
                                 "    end\n"
                                 "  end\n"
                                 "  object Mark: TCheckBox\n"
                                 "    Left = 60\n"
                                 "    Top = 32\n"
                                 "    Width = 70\n"
                                 "    Height = 17\n"
                                 "    Caption = 'Mark'\n"
                                 "    TabOrder = 2\n"
                                 "  end\n"
                                 "end\n";

class InheritedPreview : public TDesignerWindowTest {
protected:
    InheritedPreview() {
        RegisterClasses<TStampFrame>();
        DeleteFileA(Path.c_str());
        Folder.AddFile("BaseForm.dfm", BaseFile);
        Folder.AddFile("MiddleForm.dfm", MiddleFile);
        Folder.AddFile("LastForm.dfm", LastFile);
        // The classes' headers say who stands on whom.
        Folder.AddFile("MiddleForm.h", "class TMiddleForm : public TBaseForm {\n};\n");
        Folder.AddFile("LastForm.h", "class TLastForm : public TMiddleForm {\n};\n");
    }

    /// Opens the form of that name in the designer, and its project with it.
    void OpenForm(const std::string& formName) {
        if (!Window->Project()) {
            ASSERT_TRUE(Window->OpenPath(Folder.Path()));
        }
        for (int i = 0; i < Window->Project()->ModuleCount(); ++i) {
            IModule& module = Window->Project()->Module(i);
            if (module.FormName() == formName) {
                module.Open();
                module.Editor(0).Show();
            }
        }
        Settle();
        ASSERT_EQ(Designer().Form().Name(), formName);
    }

    /// Previews an open dialog with that form at its bottom; `look` runs in it.
    void Preview(const std::string& formName, TAction look, bool resize = false, bool isTold = false) {
        std::vector<TStep> steps;
        if (isTold) {
            steps.push_back(
                AnswerBox(IDOK, [](const std::string& text) { EXPECT_EQ(text, "Could not open form for preview"); }));
        }
        steps.push_back({"the dialog", Shown(Dialog), std::move(look)});
        steps.push_back(Cancel(Dialog));
        TTestDriver driver(std::move(steps));
        driver.Run([&] {
            KxPreviewDialog(Dialog, {}, {}, {}, formName, resize);
            return true;
        });
    }
    TForm* Copy() { return Dialog.CustDlgParams().BottomForm(); }
    template <class T> T& InCopy(const std::string& name, TComponent* within = nullptr) {
        return dynamic_cast<T&>(*(within ? within : Copy())->FindComponent(name));
    }

    TKxOpenDialog Dialog{nullptr};
};

TEST_F(InheritedPreview, AChainOfThreeIsShownWhole) {
    OpenForm("LastForm");
    const std::string before = Text();
    Preview("LastForm", [&] {
        ASSERT_NE(Copy(), nullptr);
        EXPECT_EQ(Copy()->Color(), clLime);
        auto& button = InCopy<TButton>("Ok");
        EXPECT_EQ(button.Caption(), "Send");
        EXPECT_EQ(button.BoundsRect(), (TRect{8, 8, 83, 33}));
        EXPECT_EQ(button.Parent(), &InCopy<TPanel>("Bar"));
        EXPECT_TRUE(IsWindowVisible(button.Handle()));
        EXPECT_FALSE(button.OnClick()) << "nothing of the form's class is done";
        EXPECT_EQ(InCopy<TLabel>("Note").Caption(), "Last");
        EXPECT_EQ(InCopy<TCheckBox>("Mark").Caption(), "Mark");
        EXPECT_TRUE(IsWindowVisible(InCopy<TCheckBox>("Mark").Handle()));
        Screenshot("preview-inherited", Dialog.DialogWindow());
    });
    EXPECT_EQ(Text(), before);
    EXPECT_FALSE(Window->Document()->IsModified());
}

TEST_F(InheritedPreview, AFrameWithinIsShownAsTheLastFormLeavesIt) {
    OpenForm("LastForm");
    Preview("LastForm", [&] {
        auto& frame = InCopy<TStampFrame>("Stamp");
        EXPECT_EQ(frame.BoundsRect(), (TRect{0, 0, 140, 30}));
        EXPECT_EQ(frame.ControlCount(), 2);
        EXPECT_EQ(InCopy<TEdit>("StampEdit", &frame).Text(), "base");
        EXPECT_EQ(InCopy<TButton>("StampButton", &frame).Caption(), "Stamp");
        EXPECT_TRUE(IsWindowVisible(InCopy<TButton>("StampButton", &frame).Handle()));
    });
}

TEST_F(InheritedPreview, WhatHasJustBeenChangedIsShown) {
    OpenForm("LastForm");
    The("Ok").SetLeft(20);
    Designer().Record("Move");
    OpenForm("BaseForm");
    The("Bar").SetTop(40);
    Designer().Record("Move");
    OpenForm("LastForm"); // it follows
    Preview("LastForm", [&] {
        EXPECT_EQ(InCopy<TButton>("Ok").Left(), 20);
        EXPECT_EQ(InCopy<TPanel>("Bar").Top(), 40);
    });
}

TEST_F(InheritedPreview, WithoutItsAncestorAFormIsToldAndNothingIsChanged) {
    for (const char* missing : {"BaseForm", "MiddleForm"}) {
        DeleteFileA(Folder.Path(std::string(missing) + ".dfm").c_str());
        Window.reset(NewForm<designer::TDesignerForm>(nullptr));
        Window->Show();
        OpenForm("LastForm");
        const std::string before = Text();
        Preview(
            "LastForm", [&] { EXPECT_EQ(Copy(), nullptr) << missing; }, true, true);
        EXPECT_EQ(Text(), before) << missing;
        EXPECT_EQ(Dialog.CustDlgParams().BottomFormName(), "") << missing;
        EXPECT_FALSE(Window->Document()->IsModified()) << missing;
        Folder.AddFile(std::string(missing) + ".dfm", missing == std::string("BaseForm") ? BaseFile : MiddleFile);
    }
}

TEST_F(InheritedPreview, TheFormOfTheAncestorIsTheOneThatIsOpen) {
    OpenForm("LastForm"); // and with it, as a means of telling what differs, what it stands on
    Preview(
        "MiddleForm", [&] { EXPECT_EQ(Copy(), nullptr) << "that form is not open"; }, false, true);
    OpenForm("MiddleForm");
    Preview(
        "MiddleForm", [&] { EXPECT_EQ(InCopy<TLabel>("Note").Caption(), "Note"); }, true);
    EXPECT_GT(Designer().Form().Width(), 300) << "as wide as the dialog";
    OpenForm("LastForm");
    EXPECT_EQ(Text(), LastFile);
}

} // namespace
} // namespace kx::test
