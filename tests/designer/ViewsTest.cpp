// SPDX-License-Identifier: MIT
// The views of a form beside the form itself, and where the usual keys go.

#include "WindowFixture.h"

#include "designer/ClipboardText.h"

namespace kx::test {
namespace {

class Views : public TDesignerWindowTest {
protected:
    Views() { Open(); }

    TMemo& Memo() const { return Window->TextView(); }
    LRESULT TopLine() const { return SendMessageA(Memo().Handle(), EM_GETFIRSTVISIBLELINE, 0, 0); }
    static bool InMenu() {
        GUITHREADINFO info{};
        info.cbSize = sizeof info;
        GetGUIThreadInfo(GetCurrentThreadId(), &info);
        return (info.flags & GUI_INMENUMODE) != 0;
    }
};

TEST_F(Views, ATextThatIsBeingWrittenIsNotReplaced) {
    Window->Command("ViewText");
    Memo().SetFocus();
    const std::string mine = Memo().Text() + "mine";
    Memo().SetText(mine);
    The("OkButton").SetLeft(24);
    Designer().Record("Move");
    EXPECT_EQ(Memo().Text(), mine);
    Memo().SetText(designer::FormText(Designer().State()));
    Window->Command("ViewForm");
    EXPECT_EQ(The("OkButton").Left(), 24);
}

TEST_F(Views, ATextThatFollowsTheFormStaysWhereItIsRead) {
    Window->Command("ViewText");
    SendMessageA(Memo().Handle(), EM_LINESCROLL, 0, 12);
    const LRESULT top = TopLine();
    ASSERT_GT(top, 0);
    The("OkButton").SetLeft(24);
    Designer().Record("Move");
    EXPECT_THAT(Memo().Text(), HasSubstr("Left = 24"));
    EXPECT_EQ(TopLine(), top);
}

TEST_F(Views, TheWholeLineWithAnErrorIsSelected) {
    Window->Command("ViewText");
    std::string text = Memo().Text();
    text.replace(text.find("Top = 200"), 9, "Top == 200");
    Memo().SetText(text);
    AnswerTo([&] { Window->Command("ViewForm"); }, IDOK);
    EXPECT_EQ(Memo().SelText(), "  Top == 200");
    EXPECT_THAT(Window->Status(), HasSubstr("line 3"));
    Memo().SetText(designer::FormText(Designer().State()));
    Window->Command("ViewForm");
}

TEST_F(Views, TheClassTellsWhatItsFilesLackFirst) {
    Folder.AddFile("OrderForm.h", "class TOrderForm : public TForm {\n};\n");
    Window->Command("ViewClass");
    EXPECT_THAT(Window->ClassState(), testing::StartsWith("Missing in OrderForm.h: "));
    Folder.AddFile("OrderForm.cpp", "");
    Window->Command("ViewForm");
    AnswerTo([&] { Window->Command("WriteClass"); }, IDNO);
    EXPECT_EQ(designer::ReadWholeFile(Folder.Path("OrderForm.h")), "class TOrderForm : public TForm {\n};\n");
    DeleteFileA(Folder.Path("OrderForm.h").c_str());
    DeleteFileA(Folder.Path("OrderForm.cpp").c_str());
    Window->Command("ViewClass");
    ASSERT_THAT(Window->ClassState(), HasSubstr("To be written"));
    Window->Command("WriteClass");
    EXPECT_THAT(Window->ClassState(), HasSubstr("have all that the form needs"));
}

// --- The form as it runs

TEST_F(Views, FontsAreScaledOnceAndAnchorsStay) {
    The("OkButton").Font().SetHeight(-15);
    The("OkButton").SetAnchors({akRight, akBottom});
    The("NameEdit").SetAnchors({akRight, akTop});
    Designer().Form().Font().SetHeight(-11);
    Designer().Record("Look");
    const int label = The("NameLabel").Font().Height();
    Window->Command("Run192");
    TForm& running = *Window->RunningForm();
    const auto in = [&](const char* name) -> TControl& {
        return dynamic_cast<TControl&>(*running.FindComponent(name));
    };
    EXPECT_EQ(in("OkButton").Font().Height(), -30);
    EXPECT_EQ(in("NameLabel").Font().Height(), 2 * label);
    EXPECT_EQ(in("OkButton").Anchors(), (TAnchors{akRight, akBottom}));
    EXPECT_EQ(in("OkButton").BoundsRect(), (TRect{16, 32, 166, 82}));
    EXPECT_EQ(in("NameEdit").BoundsRect(), (TRect{160, 24, 402, 66})) << "scaled, and not moved besides";
    running.Close();
}

// --- Keys that mean two things

TEST_F(Views, InAFieldTheUsualKeysAreTheFields) {
    ClickOn(At("OkButton"));
    designer::TInspectorGrid& grid = Window->ObjectInspector().Grid();
    grid.SelectRow(grid.FindRow("Left"));
    const TRect r = grid.ValueRect(grid.FindRow("Left"));
    ClickOn(grid.ClientToScreen({r.Left + 20, (r.Top + r.Bottom) / 2}));
    Press('A', {VK_CONTROL});
    TypeText("123");
    Press('A', {VK_CONTROL});
    Press('C', {VK_CONTROL});
    EXPECT_EQ(designer::ClipboardText(), "123");
    Press(VK_DELETE);
    EXPECT_TRUE(Has("OkButton")) << "the text was deleted, and not the component";
    Press('V', {VK_CONTROL});
    Press(VK_RETURN);
    EXPECT_EQ(The("OkButton").Left(), 123);
    EXPECT_FALSE(Has("Button1"));
}

TEST_F(Views, OnTheFormTheyAreTheForms) {
    ClickOn(At("OkButton"));
    Press('X', {VK_CONTROL});
    EXPECT_FALSE(Has("OkButton"));
    EXPECT_THAT(designer::ClipboardText(), testing::StartsWith("object OkButton: TButton\r\n"));
    EXPECT_EQ(Designer().Steps().Position(), 1U);
    ClickOn(OnForm(300, 200));
    Press('V', {VK_CONTROL});
    EXPECT_EQ(The("OkButton").Parent(), &Designer().Form());
    Press('A', {VK_CONTROL});
    EXPECT_EQ(Designer().SelectedComponents().size(), 5U);
    EXPECT_FALSE(InMenu());
}

TEST_F(Views, AClipboardWithPicturesAloneHoldsNoComponents) {
    OpenClipboard(Window->Handle());
    EmptyClipboard();
    CloseClipboard();
    EXPECT_EQ(designer::ClipboardText(), "");
    ClickOn(At("OkButton"));
    EXPECT_EQ(AnswerTo([&] { Window->Command("Paste"); }, IDOK), "The clipboard holds no components");
    EXPECT_EQ(Text(), SampleForm);
    designer::SetClipboardText(Window->Handle(), "first");
    designer::SetClipboardText(Window->Handle(), "second");
    EXPECT_EQ(designer::ClipboardText(), "second");
    const UINT ours = RegisterClipboardFormatA("kx test");
    OpenClipboard(Window->Handle());
    SetClipboardData(ours, GlobalAlloc(GMEM_MOVEABLE, 4));
    CloseClipboard();
    designer::SetClipboardText(Window->Handle(), "third");
    EXPECT_FALSE(IsClipboardFormatAvailable(ours)) << "what was there in other formats has gone";
}

TEST_F(Views, AComponentWithoutCommandsHasNoneInItsMenu) {
    Designer().Select({&The("OkButton"), &The("NameEdit")});
    auto& menu = dynamic_cast<TPopupMenu&>(*Window->FindComponent("FormMenu"));
    TTestDriver driver({{"the menu", [] { return ShownMenu() != nullptr; }, [] { PressKey(VK_ESCAPE); }}});
    driver.Run([&] {
        ClickAt(At("OkButton"), mbRight);
        return Until([&] { return menu.Items().Count() > 0 && !ShownMenu(); });
    });
    EXPECT_EQ(menu.Items()[0]->Caption(), "Cu&t");
}

} // namespace
} // namespace kx::test
