// SPDX-License-Identifier: MIT
// Changes of colours, themes and settings.

#include "tests/ui/HostDialog.h"

#include "kx/ui/widgets/ComCtrls.h"
#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/win/Handles.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/SysColors.h"
#include "tests/ui/ControlFixture.h"

#include <atomic>
#include <thread>

// The user changes colours or other settings, or logs off.

namespace kx {
namespace {

using namespace test;

/// Writes down the messages about changes that reach it.
template <class T> class TTold : public T {
public:
    using T::T;
    std::vector<std::string> Log;

    void WndProc(TMessage& message) override {
        if (message.Msg == WM_SYSCOLORCHANGE) {
            Log.emplace_back("colours");
        } else if (message.Msg == WM_SETTINGCHANGE) {
            Log.push_back(message.LParam ? FromWide(reinterpret_cast<const wchar_t*>(message.LParam)) : "settings");
        }
        T::WndProc(message);
    }
};

class SystemChanges : public TControlTest<TPanel> {
protected:
    SystemChanges() : Inner(Form.get()), Graphic(Form.get()) {
        Form->SetBorderStyle(bsNone);
        Control->SetBounds(0, 0, 200, 200);
        Inner.SetParent(Control);
        Graphic.SetParent(Control);
    }
    ~SystemChanges() override {
        Inner.SetParent(nullptr);
        Graphic.SetParent(nullptr);
    }
    TTold<TCustomControl> Inner;
    TTold<TGraphicControl> Graphic;
};

COLORREF BrushColor(HBRUSH brush) {
    LOGBRUSH info{};
    GetObjectA(brush, sizeof info, &info);
    return info.lbColor;
}

TEST_F(SystemChanges, ReachTheControlsInside) {
    Show();
    Inner.HandleNeeded();
    SendMessageA(Form->Handle(), WM_SYSCOLORCHANGE, 0, 0);
    SendMessageA(Form->Handle(), WM_SETTINGCHANGE, SPI_SETWHEELSCROLLLINES, reinterpret_cast<LPARAM>("Policy"));
    EXPECT_EQ(Inner.Log, (std::vector<std::string>{"colours", "Policy"}));
    EXPECT_EQ(Graphic.Log, (std::vector<std::string>{"colours", "Policy"}));
}

/// Does something when the colours change.
class TActing : public TGraphicControl {
public:
    using TGraphicControl::TGraphicControl;
    std::function<void()> OnChange;
    void WndProc(TMessage& message) override {
        if (message.Msg == WM_SYSCOLORCHANGE) {
            const auto change = OnChange;
            change();
        } else {
            TGraphicControl::WndProc(message);
        }
    }
};

TEST_F(SystemChanges, MayFreeControlsOnTheWay) {
    Show();
    auto* const first = new TActing(Form.get());
    first->OnChange = [&] { Control->Free(); };
    first->SetParent(Control);
    Inner.SetParent(nullptr);
    Graphic.SetParent(Form.get());
    SendMessageA(Form->Handle(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(Form->ControlCount(), 1);
    EXPECT_TRUE(Graphic.Parent() == Form.get());
    EXPECT_EQ(Graphic.Log, (std::vector<std::string>{"colours"})) << "it came later";
}

TEST_F(SystemChanges, PassOverNoSiblingOfAControlThatGoes) {
    TForm& form = *Form;
    auto* const first = new TActing(&form);
    first->OnChange = [=] { first->Free(); };
    first->SetParent(&form);
    Graphic.SetParent(&form);
    form.HandleNeeded();
    SendMessageA(form.Handle(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(Graphic.Log, (std::vector<std::string>{"colours"}));
}

TEST_F(SystemChanges, AControlThatFailsDoesNotKeepThemFromTheOthers) {
    TExceptionLog log;
    TActing failing(Form.get());
    failing.OnChange = [] { throw Exception("failed"); };
    failing.SetParent(Form.get());
    Graphic.SetParent(Form.get());
    Form->HandleNeeded();
    SendMessageA(Form->Handle(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_EQ(Graphic.Log, (std::vector<std::string>{"colours"}));
    EXPECT_EQ(log.Messages(), (std::vector<std::string>{"failed"}));
}

TEST_F(SystemChanges, ColoursFollowAtOnce) {
    TListView list(Form.get());
    list.SetParent(Form.get());
    list.SetBounds(210, 0, 50, 50);
    list.SetColor(clBtnFace);
    Show();
    TBrush brush;
    brush.SetColor(clBtnFace);
    TPen pen;
    pen.SetColor(clBtnShadow);
    const HBRUSH before = brush.Handle();
    EXPECT_EQ(brush.Handle(), before);
    pen.Handle();
    ASSERT_EQ(Control->Color(), clBtnFace);
    const auto shown = [&](int x, int y) { return GetPixel(TWindowDC(Form->Handle()).Handle(), x, y); };
    {
        const TSysColors colors;
        const COLORREF face = GetSysColor(COLOR_BTNFACE);
        EXPECT_TRUE(PumpUntil([&] { return shown(100, 100) == face && shown(300, 100) == face; }))
            << "the panel and the form";
        EXPECT_EQ(static_cast<COLORREF>(SendMessageA(list.Handle(), LVM_GETBKCOLOR, 0, 0)), face);
        EXPECT_EQ(BrushColor(brush.Handle()), face);
        EXPECT_EQ(BrushColor(Form->Brush().Handle()), face);
        LOGPEN info{};
        GetObjectA(pen.Handle(), sizeof info, &info);
        EXPECT_EQ(info.lopnColor, GetSysColor(COLOR_BTNSHADOW));
        Form->SetColor(clRed); // what is the program's own stays
        EXPECT_EQ(BrushColor(Form->Brush().Handle()), COLORREF{clRed});
    }
    EXPECT_EQ(BrushColor(brush.Handle()), GetSysColor(COLOR_BTNFACE));
    list.SetParent(nullptr);
}

TEST_F(SystemChanges, ANewThemePaintsAgain) {
    Show();
    Control->Update();
    RECT r{};
    ASSERT_FALSE(GetUpdateRect(Control->Handle(), &r, FALSE));
    SendMessageA(Control->Handle(), WM_THEMECHANGED, 0, 0);
    EXPECT_TRUE(GetUpdateRect(Control->Handle(), &r, FALSE));
}

/// A panel that writes down the messages, in a thread of its own and in a window of that thread that is a foreign one.
class TPanelElsewhere {
public:
    TPanelElsewhere()
        : FThread([this] {
              const HWND host =
                  CreateWindowExA(0, "STATIC", "", WS_POPUP, 0, 0, 200, 200, nullptr, nullptr, nullptr, nullptr);
              TTold<TPanel> panel;
              panel.SetParentWindow(host);
              Ready = true;
              MSG message;
              while (!Done) {
                  while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
                      DispatchMessageA(&message);
                  }
                  Told = panel.Log.size();
                  MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
              }
              panel.SetParentWindow(nullptr);
              DestroyWindow(host);
          }) {}
    ~TPanelElsewhere() {
        Done = true;
        FThread.join();
    }
    std::atomic<bool> Ready = false;
    std::atomic<size_t> Told = 0;
    std::atomic<bool> Done = false;

private:
    std::thread FThread;
};

/// As the system sends it: to all top-level windows.
void TellAll(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    SendMessageTimeoutW(HWND_BROADCAST, message, wParam, lParam, SMTO_NORMAL, 5000, nullptr);
}

TEST_F(SystemChanges, ReachDockedForms) {
    THostDialog host;
    Form->SetParentWindow(host.Window);
    Form->Show();
    TellAll(WM_SYSCOLORCHANGE);
    TellAll(WM_SETTINGCHANGE, 0, reinterpret_cast<LPARAM>(L"Policy"));
    EXPECT_EQ(Inner.Log, (std::vector<std::string>{"colours", "Policy"}));
    EXPECT_EQ(Graphic.Log, (std::vector<std::string>{"colours", "Policy"}));
    Form->Hide();
    Form->SetParentWindow(nullptr);
    TellAll(WM_SYSCOLORCHANGE);
    EXPECT_EQ(Inner.Log.size(), 3u) << "once, as a form of its own";
}

TEST_F(SystemChanges, ReachControlsInDialogsOfOtherThreads) {
    TPanelElsewhere elsewhere;
    ASSERT_TRUE(PumpUntil([&] { return elsewhere.Ready.load(); }));
    TellAll(WM_SYSCOLORCHANGE);
    EXPECT_TRUE(PumpUntil([&] { return elsewhere.Told == 1; }));
}

TEST_F(SystemChanges, ASettingIsNoReasonToPaintAgain) {
    Show();
    Control->Update();
    SendMessageA(Control->Handle(), WM_SETTINGCHANGE, 0, 0);
    EXPECT_FALSE(GetUpdateRect(Control->Handle(), nullptr, FALSE));
    SendMessageA(Control->Handle(), WM_SYSCOLORCHANGE, 0, 0);
    EXPECT_TRUE(GetUpdateRect(Control->Handle(), nullptr, FALSE));
}

// --- The end of the session

BOOL CALLBACK AskToLogOff(HWND window, LPARAM allowed) {
    return *reinterpret_cast<bool*>(allowed) = SendMessageA(window, WM_QUERYENDSESSION, 0, 0) != 0;
}

/// Asks as the system does when the user logs off: one top-level window of the program after the other, until one
/// refuses.
bool MayLogOff() {
    bool allowed = true;
    EnumThreadWindows(GetCurrentThreadId(), AskToLogOff, reinterpret_cast<LPARAM>(&allowed));
    return allowed;
}

class LoggingOff : public TFormTest {
protected:
    LoggingOff() {
        Form->SetOnCloseQuery([this](TObject*, bool& canClose) {
            ++Asked;
            canClose = Allow;
        });
        Form->SetOnClose([this](TObject*, TCloseAction&) { ++Closed; });
    }
    int Asked = 0;
    int Closed = 0;
    bool Allow = false;
};

TEST_F(LoggingOff, AsksAFormThatIsShownAndClosesNothing) {
    Form->Show();
    EXPECT_FALSE(MayLogOff());
    EXPECT_EQ(Asked, 1);
    Allow = true;
    EXPECT_TRUE(MayLogOff());
    EXPECT_EQ(Asked, 2);
    EXPECT_TRUE(Form->Visible());
    EXPECT_EQ(Closed, 0);
}

TEST_F(LoggingOff, AsksNoFormThatIsHiddenOrDocked) {
    Form->HandleNeeded();
    EXPECT_TRUE(MayLogOff());
    Form->Show();
    Form->Hide();
    EXPECT_TRUE(MayLogOff());
    THostDialog host;
    Form->SetParentWindow(host.Window);
    Form->Show();
    EXPECT_TRUE(MayLogOff());
    EXPECT_EQ(Asked, 0);
}

TEST_F(LoggingOff, AsksTheMainFormAlsoWhenItIsHidden) {
    TForm* form = nullptr;
    Application().CreateForm(&form);
    ASSERT_EQ(Application().MainForm(), form);
    form->SetOnCloseQuery(Form->OnCloseQuery());
    form->HandleNeeded();
    EXPECT_FALSE(MayLogOff());
    EXPECT_EQ(Asked, 1);
    form->Free();
}

TEST_F(LoggingOff, AsksAModalFormAndTheFormBehindIt) {
    // Only one of the two refuses at a time: which one the system asks first depends on which is on top.
    Form->Show();
    int modalAsked = 0;
    bool modalAllows = false;
    Allow = true;
    const TFormPtr modal(NewForm<TForm>(nullptr));
    modal->SetOnCloseQuery([&](TObject*, bool& canClose) {
        ++modalAsked;
        canClose = modalAllows || modal->ModalResult() != mrNone;
    });
    const auto logOff = [&] {
        EXPECT_FALSE(MayLogOff());
        EXPECT_EQ(modalAsked, 1) << "the modal form refuses";
        modalAllows = true;
        Allow = false;
        Asked = 0;
        EXPECT_FALSE(MayLogOff());
        EXPECT_EQ(Asked, 1) << "the form behind it refuses";
        Allow = true;
        modalAsked = 0;
        EXPECT_TRUE(MayLogOff());
        EXPECT_EQ(Asked, 2);
        EXPECT_EQ(modalAsked, 1);
        EXPECT_TRUE(modal->Visible());
        modal->SetModalResult(mrOk);
    };
    RunDialog([&] { return modal->ShowModal() == mrOk; },
              {{"the modal form shows", [&] { return IsWindowVisible(modal->Handle()) != 0; }, logOff}});
    EXPECT_EQ(modal->ModalResult(), mrOk);
}

TEST_F(LoggingOff, AFormWhoseHandlerFailsStaysAndTheErrorIsReported) {
    TExceptionLog log;
    Form->SetOnCloseQuery([](TObject*, bool&) { throw Exception("not saved"); });
    Form->Show();
    EXPECT_FALSE(MayLogOff());
    EXPECT_EQ(log.Messages(), (std::vector<std::string>{"not saved"}));
}

TEST_F(LoggingOff, AFormMayBeFreedWhenItIsAsked) {
    Form->SetOnCloseQuery([this](TObject*, bool&) { Form.reset(); });
    Form->Show();
    EXPECT_TRUE(MayLogOff());
    EXPECT_FALSE(Form);
}

TEST_F(LoggingOff, EndsTheProgramsLoopOnceTheSessionDoesEnd) {
    const auto quits = [] {
        MSG message;
        return PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE;
    };
    SendMessageA(Application().Handle(), WM_ENDSESSION, FALSE, 0); // another program has refused
    EXPECT_FALSE(quits());
    SendMessageA(Application().Handle(), WM_ENDSESSION, TRUE, 0);
    EXPECT_TRUE(quits());
}

} // namespace
} // namespace kx
