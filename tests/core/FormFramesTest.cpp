// SPDX-License-Identifier: MIT
// Frames inside forms, read and written.

#include "FormFixture.h"

namespace kx::sample {
namespace {

/// Owns what it makes. As a window does, it names to a form file just the children of the owner that it is asked about.
class TFrame : public TPanel {
    KX_CLASS()
    explicit TFrame(TComponent* owner = nullptr) : TPanel(owner) {
        for (const char* name : {"Inner", "Other"}) {
            auto* const button = new TButton(this);
            button->SetName(name);
            button->SetCaption("as made");
            button->SetParentComponent(this);
        }
        (new TServer(this))->SetName("Server");
    }
    void GetChildren(const TGetChildProc& proc, TComponent* root) override {
        for (TControl* child : Children()) {
            if (child->Owner() == root) {
                proc(child);
            }
        }
        for (int i = 0; root == this && i < ComponentCount(); ++i) {
            if (!Components(i)->HasParent()) {
                proc(Components(i));
            }
        }
    }
};

const TClass& TFrame::StaticClass() {
    static const TClassBuilder<TFrame> cls("TFrame", TPanel::StaticClass(), [](auto& c) { c.Creatable(); });
    return cls.Class();
}

/// Frames: components that make components of their own, used inside forms.
class FormFrames : public FormTest {
protected:
    void SetUp() override {
        FormTest::SetUp();
        RegisterClasses<TFrame>();
    }
};

const std::string Changed = FormOf("inline Frame1: TFrame [3]\n"
                                   "  Left = 7\n"
                                   "  inherited Inner: TButton [1]\n"
                                   "    Caption = 'changed'\n"
                                   "    Target = Other\n"
                                   "  end\n"
                                   "  inherited Server: TServer\n"
                                   "    Left = 40\n"
                                   "  end\n"
                                   "end\n"
                                   "object Inner: TButton\n"
                                   "end");

TEST_F(FormFrames, WhatIsInsideAFrameIsWrittenThoughTheFrameOwnsIt) {
    const auto form = ReadForm(Changed);
    TComponent* const frame = form->FindComponent("Frame1");
    EXPECT_EQ(dynamic_cast<TButton&>(*frame->FindComponent("Inner")).Caption(), "changed");
    EXPECT_EQ(frame->FindComponent("Server")->DesignInfo(), 40);
    EXPECT_NE(frame->FindComponent("Inner"), form->FindComponent("Inner"));
    EXPECT_EQ(Written(*form), FormOf("inline Frame1: TFrame [3]\n"
                                     "  Left = 7\n"
                                     "  inherited Inner: TButton [1]\n"
                                     "    Caption = 'changed'\n"
                                     "    Target = Other\n"
                                     "  end\n"
                                     "  inherited Other: TButton\n"
                                     "    Caption = 'as made'\n"
                                     "  end\n"
                                     "  inherited Server: TServer\n"
                                     "    Left = 40\n"
                                     "  end\n"
                                     "end\n"
                                     "object Inner: TButton\n"
                                     "end"))
        << "all of it, since nobody says what the frame makes";
    EXPECT_EQ(Written(*ReadForm(Written(*form))), Written(*form));
}

TEST_F(FormFrames, OfAKnownFrameJustTheDifferencesAreWritten) {
    const auto form = ReadForm(Changed);
    TFrame pristine;
    TMemoryStream stream;
    TWriter writer(stream);
    writer.SetOnFindAncestor([&](TWriter&, TComponent* component, TComponent*& ancestor) {
        EXPECT_EQ(component->Name(), "Frame1");
        ancestor = &pristine;
    });
    writer.WriteRootComponent(*form);
    EXPECT_EQ(ToText(stream.Bytes()), Changed);
}

TEST_F(FormFrames, AnUnchangedFrameComesBackAsItIs) {
    const auto form = ReadForm("object F: TForm inline Frame1: TFrame end end");
    EXPECT_EQ(Written(*form), FormOf("inline Frame1: TFrame\n"
                                     "  inherited Inner: TButton\n"
                                     "    Caption = 'as made'\n"
                                     "  end\n"
                                     "  inherited Other: TButton\n"
                                     "    Caption = 'as made'\n"
                                     "  end\n"
                                     "  inherited Server: TServer\n"
                                     "  end\n"
                                     "end"));
    TFrame pristine;
    TMemoryStream stream;
    TWriter writer(stream);
    writer.SetOnFindAncestor([&](TWriter&, TComponent*, TComponent*& ancestor) { ancestor = &pristine; });
    writer.WriteRootComponent(*form);
    EXPECT_EQ(ToText(stream.Bytes()), FormOf("inline Frame1: TFrame\nend"));
}

/// A frame whose controls have handlers of its own.
class THandlingFrame : public TFrame {
    KX_CLASS()
    explicit THandlingFrame(TComponent* owner = nullptr) : TFrame(owner) {
        ButtonOf("Inner").SetOnClick(TNotifyEvent(this, &THandlingFrame::InnerClick, "InnerClick"));
        ButtonOf("Other").SetOnClick(TNotifyEvent(this, &THandlingFrame::InnerClick, "InnerClick"));
    }
    TButton& ButtonOf(std::string_view name) { return dynamic_cast<TButton&>(*FindComponent(name)); }
    void InnerClick(TObject*) {}
};

const TClass& THandlingFrame::StaticClass() {
    static const TClassBuilder<THandlingFrame> cls("THandlingFrame", TFrame::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Method("InnerClick", &THandlingFrame::InnerClick);
    });
    return cls.Class();
}

TEST_F(FormFrames, TheFormDoesNotNameHandlersThatAreTheFramesOwn) {
    RegisterClasses<THandlingFrame>();
    THandlingFrame other;
    const auto form = ReadForm("object F: TForm inline Frame1: THandlingFrame end end");
    auto& frame = dynamic_cast<THandlingFrame&>(*form->FindComponent("Frame1"));
    frame.ButtonOf("Other").SetOnClick(TNotifyEvent(&other, &THandlingFrame::InnerClick, "OfAnother"));
    const std::string text = Written(*form);
    EXPECT_EQ(text.find("InnerClick"), std::string::npos) << text;
    EXPECT_NE(text.find("OnClick = OfAnother"), std::string::npos) << text;
    EXPECT_NE(Written(frame).find("OnClick = InnerClick"), std::string::npos) << "in the frame's own file";
}

TEST_F(FormFrames, ADesignerKeepsJustWhatTheFileSaysOfAFrame) {
    ExpectToComeBack(Changed);
    ExpectToComeBack(FormOf("inline Frame1: TFrame\n  inherited Other: TButton\n  end\nend"));
    const auto form = ReadKeeping(Changed);
    TComponent* const frame = form->FindComponent("Frame1");
    dynamic_cast<TButton&>(*frame->FindComponent("Other")).SetLeft(5);
    std::string expected = Changed;
    expected.replace(expected.find("    inherited Server"), 0,
                     "    inherited Other: TButton\r\n      Left = 5\r\n    end\r\n");
    EXPECT_EQ(Written(*form), expected);
}

TEST_F(FormFrames, FramesInsideFramesComeBack) {
    class TOuterFrame : public TFrame {
    public:
        explicit TOuterFrame(TComponent* owner = nullptr) : TFrame(owner) {
            TMemoryStream stream(
                "object TOuterFrame inline Nested: TFrame inherited Inner: TButton Left = 1 end end end");
            ReadComponent(stream, this);
        }
        static const TClass& StaticClass() {
            static const TClassBuilder<TOuterFrame> cls("TOuterFrame", TFrame::StaticClass(),
                                                        [](auto& c) { c.Creatable(); });
            return cls.Class();
        }
        const TClass& ClassType() const override { return StaticClass(); }
    };
    RegisterClasses<TOuterFrame>();
    const std::string text = FormOf("inline Frame1: TOuterFrame\n"
                                    "  inherited Nested: TFrame\n"
                                    "    inherited Inner: TButton\n"
                                    "      Left = 2\n"
                                    "    end\n"
                                    "  end\n"
                                    "end");
    ExpectToComeBack(text);
    const auto form = ReadForm(text);
    TComponent* const nested = form->FindComponent("Frame1")->FindComponent("Nested");
    EXPECT_EQ(dynamic_cast<TButton&>(*nested->FindComponent("Inner")).Left(), 2);
    TOuterFrame pristine;
    TMemoryStream stream;
    TWriter writer(stream);
    writer.SetOnFindAncestor([&](TWriter&, TComponent*, TComponent*& ancestor) { ancestor = &pristine; });
    writer.WriteRootComponent(*form);
    EXPECT_EQ(ToText(stream.Bytes()), text);
    EXPECT_EQ(Written(*ReadForm(Written(*form))), Written(*form));
}

TEST_F(FormFrames, AFrameOfAnAncestorIsAFrameInAFormThatIsWrittenWhole) {
    TForm form;
    for (const std::string& file :
         {FormOf("inline Frame1: TFrame\n  Left = 3\n  inherited Inner: TButton\n    Left = 4\n  end\nend"),
          std::string("inherited F: TForm\n inherited Frame1: TFrame\n  inherited Inner: TButton\n   Caption = 'new'\n"
                      "  end\n end\nend")}) {
        TMemoryStream stream(file);
        ReadComponent(stream, &form, [](TReader& reader) { reader.SetKeepsUnknown(true); });
    }
    TMemoryStream stream;
    WriteComponent(stream, form, TStreamFormat::Text, nullptr, [](TWriter& writer) { writer.SetWritesWhole(); });
    EXPECT_EQ(stream.Bytes(), FormOf("inline Frame1: TFrame\n"
                                     "  Left = 3\n"
                                     "  inherited Inner: TButton\n"
                                     "    Caption = 'new'\n"
                                     "    Left = 4\n"
                                     "  end\n"
                                     "  inherited Other: TButton\n"
                                     "    Caption = 'as made'\n"
                                     "  end\n"
                                     "  inherited Server: TServer\n"
                                     "  end\n"
                                     "end"));
    const auto copy = ReadForm(stream.Bytes());
    TComponent* const frame = copy->FindComponent("Frame1");
    EXPECT_EQ(dynamic_cast<TButton&>(*frame->FindComponent("Inner")).Caption(), "new");
    EXPECT_EQ(frame->ComponentCount(), 3);
}

TEST_F(FormFrames, EveryReaderKeepsThePositionsOfComponents) {
    const std::string text =
        FormOf("object P: TPanel [2]\n  object B: TButton [-1]\n  end\nend\nobject S: TServer [0]\nend");
    EXPECT_EQ(Written(*ReadForm(text)), text);
    EXPECT_EQ(Written(*ReadForm(ToBinary(text)), TStreamFormat::Binary), ToBinary(text));
}

} // namespace
} // namespace kx::sample
