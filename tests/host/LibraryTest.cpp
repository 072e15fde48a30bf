// SPDX-License-Identifier: MIT
// Libraries that hold the framework, in a program that holds it too.

#include "PlainWindow.h"
#include "plugin/Plugin.h"

#include "kx/opensave/KxOpenDlg.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/FormTest.h"
#include "tests/support/Process.h"
#include "tests/support/TestDriver.h"

#include <functional>

namespace kx {
namespace {

using namespace test;

std::string BesideThisProgram(const std::string& file) {
    char self[MAX_PATH];
    GetModuleFileNameA(nullptr, self, MAX_PATH);
    return ExtractFilePath(std::string(self)) + file;
}

/// As the system tells all windows.
BOOL CALLBACK TellSettingsChanged(HWND window, LPARAM) {
    SendMessageW(window, WM_SETTINGCHANGE, 0, 0);
    return TRUE;
}

const std::string PluginPath = "plugin\\kx_host_plugin.dll";

TEST(LibraryInC, LeavesNothingBehindAfterAHundredTimes) {
    const std::string arguments =
        "\"" + BesideThisProgram(PluginPath) + "\" \"" + BesideThisProgram("bare\\kx_host_bare.dll") + "\" 100";
    EXPECT_EQ(RunProgram("c-host\\kx_host_in_c.exe", arguments, {}, 250), 0u) << "see the numbers in its source";
}

/// The library, loaded.
class Library : public testing::Test {
protected:
    Library() { Load(); }
    ~Library() override {
        if (FModule) {
            PluginEnd();
        }
        EXPECT_THAT(Exceptions.Messages(), IsEmpty());
    }

    void Load() {
        FModule.reset(LoadLibraryA(BesideThisProgram(PluginPath).c_str()));
        Find(PluginShow, "PluginShow");
        Find(PluginEnd, "PluginEnd");
        Find(PluginBrowse, "PluginBrowse");
        Find(PluginKeepForm, "PluginKeepForm");
    }
    template <class F> void Find(F& function, const char* name) const {
        function = reinterpret_cast<F>(reinterpret_cast<void*>(GetProcAddress(FModule.get(), name)));
    }
    void SetUp() override { ASSERT_TRUE(PluginShow && PluginEnd && PluginBrowse && PluginKeepForm); }
    void Unload() { FModule.reset(); }
    static bool IsLoaded() { return GetModuleHandleA("kx_host_plugin.dll") != nullptr; }
    HINSTANCE Instance() const { return FModule.get(); }
    /// The hidden window of the library's application; null when there is none.
    HWND ApplicationWindow() const {
        HWND window = nullptr;
        while ((window = FindWindowExA(nullptr, window, "TApplication", nullptr)) != nullptr) {
            if (reinterpret_cast<HINSTANCE>(GetClassLongPtrW(window, GCLP_HMODULE)) == Instance() &&
                GetWindowThreadProcessId(window, nullptr) == GetCurrentThreadId()) {
                break;
            }
        }
        return window;
    }
    /// What is done in the library's dialog.
    int ShowWith(std::function<void(HWND dialog)> inside) {
        return PluginShow(
            Owner.Get(), 0, [](HWND dialog, void* data) { (*static_cast<std::function<void(HWND)>*>(data))(dialog); },
            &inside);
    }

    TExceptionLog Exceptions;
    TPlainWindow Owner;
    TPluginShow PluginShow = nullptr;
    TPluginEnd PluginEnd = nullptr;
    TPluginBrowse PluginBrowse = nullptr;
    TPluginKeepForm PluginKeepForm = nullptr;

private:
    unique_hmodule FModule;
};

TEST_F(Library, FindsItsResourcesAndRegistersItsClassesForItself) {
    EXPECT_EQ(PluginShow(Owner.Get(), 0, nullptr, nullptr), PLUGIN_ALL);
    WNDCLASSA info;
    EXPECT_TRUE(GetClassInfoA(Instance(), "TPluginForm", &info));
    EXPECT_EQ(info.hInstance, Instance());
    EXPECT_FALSE(GetClassInfoA(HInstance(), "TPluginForm", &info));
}

TEST_F(Library, KeepsItsExceptionsToItself) {
    EXPECT_EQ(PluginShow(Owner.Get(), 1, nullptr, nullptr), PLUGIN_ALL | PLUGIN_THROWN);
    EXPECT_THAT(Exceptions.Messages(), IsEmpty()) << "the program's own sink";
}

TEST_F(Library, GoesWhenItHasEnded) {
    PluginShow(Owner.Get(), 0, nullptr, nullptr);
    HINSTANCE instance = Instance();
    EXPECT_NE(ApplicationWindow(), nullptr);
    EXPECT_TRUE(PluginEnd());
    EXPECT_EQ(ApplicationWindow(), nullptr);
    WNDCLASSA info;
    EXPECT_FALSE(GetClassInfoA(instance, "TPluginForm", &info));
    EXPECT_FALSE(GetClassInfoA(instance, "TApplication", &info));
    Unload();
    EXPECT_FALSE(IsLoaded());
}

TEST_F(Library, GoesWhenItWasNeverUsed) {
    EXPECT_TRUE(PluginEnd());
    Unload();
    EXPECT_FALSE(IsLoaded());
}

TEST_F(Library, StaysWhenItHasNotEnded) {
    PluginShow(Owner.Get(), 0, nullptr, nullptr);
    Unload();
    EXPECT_TRUE(IsLoaded()) << "its windows need its code";
    EnumThreadWindows(GetCurrentThreadId(), TellSettingsChanged, 0);
    Load();
    EXPECT_EQ(PluginShow(Owner.Get(), 0, nullptr, nullptr), PLUGIN_ALL);
    EXPECT_TRUE(PluginEnd());
    Unload();
    EXPECT_FALSE(IsLoaded());
}

TEST_F(Library, BeginsAnewWhenItIsUsedAgain) {
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(PluginShow(Owner.Get(), i % 2, nullptr, nullptr), PLUGIN_ALL | (i % 2 ? PLUGIN_THROWN : 0));
        EXPECT_TRUE(PluginEnd());
    }
    Unload();
    EXPECT_FALSE(IsLoaded());
}

TEST_F(Library, DoesNotEndWhileItShowsADialog) {
    EXPECT_EQ(ShowWith([this](HWND dialog) {
                  EXPECT_FALSE(PluginEnd());
                  EXPECT_TRUE(IsWindowVisible(dialog));
                  EXPECT_NE(ApplicationWindow(), nullptr) << "nothing of it has ended";
              }),
              PLUGIN_ALL);
    EXPECT_TRUE(PluginEnd());
}

TEST_F(Library, StaysAsLongAsThereAreFormsOfIt) {
    PluginKeepForm(1);
    EXPECT_FALSE(PluginEnd());
    Unload();
    EXPECT_TRUE(IsLoaded());
    Load();
    PluginKeepForm(0);
    EXPECT_TRUE(PluginEnd());
    Unload();
    EXPECT_FALSE(IsLoaded());
}

TEST_F(Library, ItsEndClosesADialogThatDoesNotBlock) {
    for (int i = 0; i < 3; ++i) {
        ASSERT_TRUE(PluginBrowse(Owner.Get()));
        EXPECT_TRUE(Owner.Enabled());
        EXPECT_TRUE(PluginEnd());
        EXPECT_THAT(TopWindows("#32770"), IsEmpty());
    }
    Unload();
    EXPECT_FALSE(IsLoaded());
}

// --- The library's dialogs and ours

class TwoModules : public Library {
protected:
    TwoModules() : Form(MakeForm(clTeal, 120, 200)), Edit(new TEdit(Form.get())) {
        Edit->SetParent(Form.get());
        Edit->SetBounds(5, 5, 80, 24);
        Dialog.SetOwnerWindow(Owner.Get());
        Dialog.CustDlgParams().SetRightForm(Form.get());
        Dialog.PlacesBar().SetNative(false);
    }

    TFormPtr Form;
    TEdit* Edit;
    TKxOpenDialog Dialog{nullptr};
};

TEST_F(TwoModules, ADialogOfTheLibraryInAHandlerOfOurs) {
    int shares = 0;
    Dialog.SetOnUpLevelNavigating([&](TObject*, bool& allow) {
        allow = false;
        HWND ours = Dialog.DlgHandle();
        EXPECT_EQ(PluginShow(ours, 1, nullptr, nullptr), PLUGIN_ALL | PLUGIN_THROWN);
        EXPECT_TRUE(IsWindowEnabled(ours));
        EXPECT_FALSE(Owner.Enabled());
        ++shares;
    });
    Look(Dialog, [&] {
        for (int i = 0; i < 2; ++i) { // it comes and goes, and ours stays what it is
            SendMessageW(Dialog.DlgHandle(), WM_COMMAND, 40961, 0);
            EXPECT_TRUE(PluginEnd());
        }
        EXPECT_TRUE(IsChild(Dialog.DlgHandle(), Edit->WindowHandle()));
        EXPECT_EQ(FindControl(Edit->WindowHandle()), Edit);
        SetFocus(Edit->WindowHandle());
        SendMessageW(Edit->WindowHandle(), WM_CHAR, 'x', 1);
        EXPECT_EQ(Edit->Text(), "x");
    });
    EXPECT_EQ(shares, 2);
    EXPECT_TRUE(Owner.Enabled());
}

TEST_F(TwoModules, ADialogOfOursInAHandlerOfTheLibrary) {
    bool looked = false;
    EXPECT_EQ(ShowWith([&](HWND theirs) {
                  Dialog.SetOwnerWindow(theirs);
                  Look(Dialog, [&] {
                      looked = true;
                      EXPECT_FALSE(IsWindowEnabled(theirs));
                      EXPECT_TRUE(IsWindowVisible(Edit->WindowHandle()));
                  });
                  EXPECT_TRUE(IsWindowEnabled(theirs));
                  EXPECT_FALSE(Owner.Enabled());
              }),
              PLUGIN_ALL);
    EXPECT_TRUE(looked);
    EXPECT_TRUE(Owner.Enabled());
}

TEST_F(TwoModules, HaveClassesOfTheirOwnUnderTheSameNames) {
    ShowWith([&](HWND theirs) {
        HWND edit = FindDescendant(theirs, "TEdit");
        ASSERT_NE(edit, nullptr);
        EXPECT_EQ(reinterpret_cast<HINSTANCE>(GetClassLongPtrW(edit, GCLP_HMODULE)), Instance());
        EXPECT_EQ(reinterpret_cast<HINSTANCE>(GetClassLongPtrW(Edit->Handle(), GCLP_HMODULE)), HInstance());
        EXPECT_EQ(ClassOf(edit), ClassOf(Edit->WindowHandle()));
        EXPECT_EQ(FindControl(edit), nullptr) << "it is none of ours";
    });
}

} // namespace
} // namespace kx
