// SPDX-License-Identifier: MIT
// F1 and the topics of help.

#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "kx/win/Handles.h"
#include "tests/support/FormFiles.h"
#include "tests/support/FormTest.h"

// Help topics of controls, F1, and the system's help program.

namespace kx {
namespace {

using namespace test;

/// Stands for the help program of the emulator, which finds it by its class and sends it what is to be shown.
class THelpProgram {
public:
    struct TRequest {
        WORD Command;
        DWORD Data;
        std::string File;
    };

    THelpProgram() {
        WNDCLASSA info{};
        info.lpfnWndProc = WindowProc;
        info.hInstance = HInstance();
        info.lpszClassName = "MS_WINHELP";
        RegisterClassA(&info);
        FWindow.reset(
            CreateWindowExA(0, info.lpszClassName, "", WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, HInstance(), nullptr));
        Requests.clear();
    }
    inline static std::vector<TRequest> Requests;

private:
    /// As the emulator's WinHelp lays it out in memory.
    struct TSent {
        WORD Size;
        WORD Command;
        LONG Data;
        LONG Reserved;
        WORD FileOffset;
        WORD DataOffset;
    };

    static LRESULT CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
        if (message == WM_COPYDATA) {
            const auto& data = *reinterpret_cast<const COPYDATASTRUCT*>(lParam);
            EXPECT_GE(data.cbData, sizeof(TSent));
            const auto& sent = *static_cast<const TSent*>(data.lpData);
            const char* const file = sent.FileOffset ? reinterpret_cast<const char*>(&sent) + sent.FileOffset : "";
            Requests.push_back({sent.Command, static_cast<DWORD>(sent.Data), file});
            return TRUE;
        }
        return DefWindowProcA(window, message, wParam, lParam);
    }

    unique_hwnd FWindow;
};

class HelpTopics : public TFormTest {
protected:
    ~HelpTopics() override {
        Application().SetOnHelp({});
        Application().SetHelpFile("");
    }
    void LogTopics() {
        Application().SetOnHelp([this](uint16_t command, LPARAM data, bool& callHelp) {
            EXPECT_EQ(command, HELP_CONTEXT);
            Topics.push_back(static_cast<int>(data));
            callHelp = false;
        });
    }
    void LogKeywords() {
        Application().SetOnHelp([this](uint16_t command, LPARAM data, bool& callHelp) {
            Keywords.push_back(command == HELP_KEY ? reinterpret_cast<const char*>(data) : std::to_string(data));
            callHelp = false;
        });
    }
    void Show(TWinControl& focused) {
        TFormTest::Show();
        focused.SetFocus();
    }

    TPanel* Panel = Add<TPanel>(10, 10, 200, 100);
    TEdit* Edit = Add<TEdit>(10, 10, 100, 21, Panel);
    TComboBox* Combo = Add<TComboBox>(10, 40, 100, 21, Panel);
    std::vector<int> Topics;
    std::vector<std::string> Keywords;
};

TEST_F(HelpTopics, AControlsTopicIsItsOwnOrThatOfTheNearestAround) {
    EXPECT_EQ(Edit->HelpContext(), 0);
    EXPECT_EQ(Edit->NearestHelpContext(), 0);
    Form->SetHelpContext(3);
    EXPECT_EQ(Edit->NearestHelpContext(), 3);
    Panel->SetHelpContext(2);
    EXPECT_EQ(Edit->NearestHelpContext(), 2);
    Edit->SetHelpContext(1);
    EXPECT_EQ(Edit->NearestHelpContext(), 1);
    EXPECT_EQ(Form->NearestHelpContext(), 3);
}

TEST_F(HelpTopics, TheTopicIsStoredWhenThereIsOne) {
    const auto written = [&] { return FormTextOf(*Form); };
    EXPECT_EQ(written().find("HelpContext"), std::string::npos);
    Edit->SetHelpContext(17);
    EXPECT_NE(written().find("HelpContext = 17\r\n"), std::string::npos) << written();
}

TEST_F(HelpTopics, F1ShowsTheTopicOfTheFocusedControl) {
    LogTopics();
    Form->SetHelpContext(3);
    Edit->SetHelpContext(1);
    Show(*Edit);
    PressKey(VK_F1);
    ASSERT_TRUE(PumpUntil([&] { return !Topics.empty(); }));
    Edit->SetHelpContext(0);
    PressKey(VK_F1);
    ASSERT_TRUE(PumpUntil([&] { return Topics.size() == 2; }));
    EXPECT_EQ(Topics, (std::vector<int>{1, 3}));
}

TEST_F(HelpTopics, ATopicMayBeAKeyword) {
    LogKeywords();
    Form->SetHelpKeyword("of the form");
    Form->SetHelpType(htKeyword);
    Panel->SetHelpContext(5);
    Panel->SetHelpKeyword("not asked for");
    Edit->SetHelpType(htKeyword);
    Edit->SetHelpContext(7); // nor is this
    EXPECT_EQ(Edit->NearestHelp(), Panel);
    Show(*Edit);
    const auto press = [&] {
        Keywords.clear();
        PressKey(VK_F1);
        PumpUntil([&] { return !Keywords.empty(); });
        return Keywords.front();
    };
    EXPECT_EQ(press(), "5");
    Edit->SetHelpKeyword("of the edit");
    EXPECT_EQ(press(), "of the edit");
    Edit->SetHelpKeyword("");
    Panel->SetHelpType(htKeyword);
    EXPECT_EQ(press(), "not asked for");
    Panel->SetHelpKeyword("");
    EXPECT_EQ(press(), "of the form");
    Form->SetHelpKeyword("");
    EXPECT_EQ(Edit->NearestHelp(), nullptr);
}

TEST_F(HelpTopics, TheKeywordIsStoredWhenThereIsOne) {
    EXPECT_EQ(FormTextOf(*Form).find("Help"), std::string::npos);
    ReadFormOver(*Form, "object F: TForm HelpType = htKeyword HelpKeyword = 'key' end");
    EXPECT_EQ(Form->HelpKeyword(), "key");
    EXPECT_NE(FormTextOf(*Form).find("  HelpKeyword = 'key'\r\n  HelpType = htKeyword\r\n"), std::string::npos);
}

TEST_F(HelpTopics, F1InTheEditOfAComboBoxShowsTheTopicOfTheComboBox) {
    LogTopics();
    Combo->SetHelpContext(4);
    Show(*Combo);
    ASSERT_NE(GetFocus(), Combo->WindowHandle()) << "the focus is in its edit";
    PressKey(VK_F1);
    ASSERT_TRUE(PumpUntil([&] { return !Topics.empty(); }));
    EXPECT_EQ(Topics, std::vector<int>{4});
}

TEST_F(HelpTopics, AMenuItemHasNoTopicOfAControl) {
    LogTopics();
    Form->SetHelpContext(3);
    Show(*Edit);
    HELPINFO info{};
    info.cbSize = sizeof info;
    info.iContextType = HELPINFO_MENUITEM;
    SendMessageA(Form->Handle(), WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_TRUE(Topics.empty());
    info.iContextType = HELPINFO_WINDOW;
    info.hItemHandle = Edit->Handle();
    SendMessageA(Form->Handle(), WM_HELP, 0, reinterpret_cast<LPARAM>(&info));
    EXPECT_EQ(Topics, std::vector<int>{3});
}

TEST_F(HelpTopics, WithoutATopicF1DoesNothing) {
    LogTopics();
    Show(*Edit);
    PressKey(VK_F1);
    bool pressed = false;
    Edit->SetOnKeyUp([&](TObject*, uint16_t& key, TShiftState) { pressed = pressed || key == 'A'; });
    PressKey('A'); // comes after all that the first key brings
    ASSERT_TRUE(PumpUntil([&] { return pressed; }));
    EXPECT_TRUE(Topics.empty());
}

TEST_F(HelpTopics, WithoutHandlerAndHelpFileNobodyShowsIt) {
    EXPECT_FALSE(Application().HelpContext(5));
    LogTopics();
    EXPECT_TRUE(Application().HelpContext(5));
    EXPECT_EQ(Topics, std::vector<int>{5});
}

TEST_F(HelpTopics, TheSystemShowsTheHelpFileUnlessTheHandlerDid) {
    const THelpProgram program;
    Application().SetHelpFile("C:\\program.hlp");
    EXPECT_TRUE(Application().HelpContext(6));
    ASSERT_EQ(program.Requests.size(), 1u);
    EXPECT_EQ(program.Requests[0].Command, HELP_CONTEXT);
    EXPECT_EQ(program.Requests[0].Data, 6u);
    EXPECT_EQ(program.Requests[0].File, "C:\\program.hlp");
    Application().SetOnHelp([&](uint16_t, LPARAM data, bool&) { Topics.push_back(static_cast<int>(data)); });
    EXPECT_TRUE(Application().HelpContext(7));
    EXPECT_EQ(Topics, std::vector<int>{7});
    EXPECT_EQ(program.Requests.size(), 2u) << "the handler left it to the system";
    LogTopics();
    EXPECT_TRUE(Application().HelpContext(8));
    EXPECT_EQ(program.Requests.size(), 2u);
    Application().SetOnHelp({});
    EXPECT_TRUE(Application().HelpKeyword("key"));
    ASSERT_EQ(program.Requests.size(), 3u);
    EXPECT_EQ(program.Requests[2].Command, HELP_KEY);
}

} // namespace
} // namespace kx
