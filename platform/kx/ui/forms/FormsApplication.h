// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/SystemNames.h"
#include "kx/graphics/Graphics.h"
#include "kx/ui/controls/Control.h"
#include "kx/ui/forms/FormsTypes.h"

#include <atomic>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace kx {

class TApplication;
class TCustomForm;
class TFormsHost;
class THintTip;

TApplication& Application(); ///< The program's, or the library's; made on first use.

/// For a library that programs load and unload, before each unloading: ends the application with its components and
/// threads, and gives back what the library has of the system. To be called in the application's thread, while no
/// dialog is shown, and not by DllMain, in which threads cannot end. Used again, the library begins anew.
///
/// Without it the library stays loaded, whoever unloads it, until the process ends: its windows and threads need its
/// code. In a program, whose application ends with it, it does nothing.
/// @throws EInvalidOperation in another thread, while a dialog is shown or a message is handled; also afterwards, when
/// forms, controls or threads are left that the application does not own. Then the library stays loaded.
void EndApplication();

/// The running program: owner of its forms, message loop, last resort for exceptions, and hints.
///
/// It belongs, with its forms, to the thread that used it first. Dialogs may run in other threads with controls of
/// their own; what they do with the application is done so that nothing of the first thread's is in danger: hints show
/// for controls of the application's thread only; modal levels, OnMessage and OnIdle are about that thread alone;
/// OnException fires in it; Screen lists the forms that were made in it.
class TApplication : public TComponent {
    KX_CLASS()

    TApplication();
    ~TApplication() override;

    /// The application while it exists; null before its first use and at the end of the program.
    static TApplication* Existing();

    void Initialize() {} ///< First call of a program; start-up is done by then.
    /// A new form, owned by the application and stored in `*form` before its OnCreate runs. The first one becomes the
    /// main form.
    template <class T> void CreateForm(T** form) {
        *form = new T(this);
        FormCreated(**form);
    }
    /// Shows the main form and handles messages until `Terminate`, or until the main form is closed.
    void Run();
    void Terminate(); ///< Any thread may call it.
    bool Terminated() const { return FTerminated; }
    void ProcessMessages(); ///< Handles all waiting messages.
    void HandleMessage();   ///< Handles one message, or waits for one.
    /// For a program with a message loop of its own instead of Run: the loop offers each message here before anything
    /// else. True: it is done, and is neither translated nor dispatched. It fires OnMessage, and serves the keys that
    /// move among the controls of forms, press their buttons and choose from their menus. The system's dialogs with
    /// what is docked in them have a loop of their own and do not need this, unless they are shown without blocking.
    /// Hints, timers, queued calls and Synchronize work in every loop; OnIdle fires in the framework's loops only.
    bool PreTranslateMessage(MSG& message);

    /// Hidden window that owns all forms but the main one. So those have no button in the task bar, and Alt+Tab offers
    /// them all as one.
    HWND Handle();
    TCustomForm* MainForm() const { return FMainForm; }
    std::string Title() const;
    void SetTitle(const std::string& value) { FTitle = value; }
    TIcon& Icon() { return FIcon; }
    const TIcon& Icon() const { return FIcon; }
    std::string ExeName() const;

    /// Of the forms that have none of their own (ParentBiDiMode). With bdRightToLeft, form files are read reversed.
    TBiDiMode BiDiMode() const { return FBiDiMode; }
    void SetBiDiMode(TBiDiMode value);

    /// The window that modal windows of the system should be owned by: the active form's, the main form's, or `Handle`.
    HWND ActiveFormHandle();
    /// A message box over the active window; other windows are disabled meanwhile. Returns IDOK, ...
    int MessageBox(const std::string& text, const std::string& caption, UINT flags = 0 /* MB_OK */);
    KX_AS_SYSTEM_NAMES(int, MessageBox, (const std::string& text, const std::string& caption, UINT flags = 0),
                       (text, caption, flags), )

    /// Reports the exception that is being handled: by OnException, else by ShowException. EAbort is silent.
    void HandleException(TObject* sender);
    void ShowException(const std::exception& e);

    // --- Help

    const std::string& HelpFile() const { return FHelpFile; } ///< The program's help file; empty: none.
    void SetHelpFile(const std::string& value) { FHelpFile = value; }
    /// Shows a topic: by OnHelp, else by the system's help program when there is a help file. False: nobody did.
    bool HelpContext(int context);
    /// The same for the topic with this keyword: HELP_KEY, whose data is the address of the text.
    bool HelpKeyword(const std::string& keyword);
    bool HelpCommand(uint16_t command, LPARAM data);

    // --- Hints

    bool ShowHint() const { return FShowHint; }
    void SetShowHint(bool value);
    int HintPause() const { return FHintPause; } ///< Milliseconds the mouse rests before a hint shows.
    void SetHintPause(int value) { FHintPause = value; }
    int HintHidePause() const { return FHintHidePause; } ///< Milliseconds a hint stays.
    void SetHintHidePause(int value) { FHintHidePause = value; }
    const std::string& Hint() const { return FHint; } ///< Long hint of the control under the mouse.
    void SetHint(const std::string& value);
    void ActivateHint(const TPoint& screenPoint); ///< Shows the hint of the control there at once.
    void CancelHint();                            ///< No hint shows, nor is about to.
    void HideHint();
    HWND HintHandle() const; ///< Window of the hint that is shown; null: none.

    const TExceptionEvent& OnException() const { return FOnException; }
    void SetOnException(TExceptionEvent value) { FOnException = std::move(value); }
    const TMessageEvent& OnMessage() const { return FOnMessage; }
    void SetOnMessage(TMessageEvent value) { FOnMessage = std::move(value); }
    const THelpEvent& OnHelp() const { return FOnHelp; }
    void SetOnHelp(THelpEvent value) { FOnHelp = std::move(value); }
    const TIdleEvent& OnIdle() const { return FOnIdle; }
    void SetOnIdle(TIdleEvent value) { FOnIdle = std::move(value); }
    const TNotifyEvent& OnHint() const { return FOnHint; }
    void SetOnHint(TNotifyEvent value) { FOnHint = std::move(value); }
    const TNotifyEvent& OnActivate() const { return FOnActivate; }
    void SetOnActivate(TNotifyEvent value) { FOnActivate = std::move(value); }
    const TNotifyEvent& OnDeactivate() const { return FOnDeactivate; }
    void SetOnDeactivate(TNotifyEvent value) { FOnDeactivate = std::move(value); }
    const TNotifyEvent& OnModalBegin() const { return FOnModalBegin; }
    void SetOnModalBegin(TNotifyEvent value) { FOnModalBegin = std::move(value); }
    const TNotifyEvent& OnModalEnd() const { return FOnModalEnd; }
    void SetOnModalEnd(TNotifyEvent value) { FOnModalEnd = std::move(value); }

    /// A modal dialog begins or has ended; nested ones are reported once. Modal forms and dialogs call these.
    void ModalStarted();
    void ModalFinished();
    int ModalLevel() const { return FModalLevel; }

    /// Calls `work` from the message loop of the application's thread; any thread may queue it.
    void QueueCall(std::function<void()> work);

    // --- Threads

    bool InOwnThread() const;
    /// Runs `work` in the application's thread and returns when it is done; what it throws comes out here. In another
    /// thread the caller waits until the application's thread handles messages, whoever's loop it is in: its own, a
    /// dialog's, a menu's, or a wait for an answer of another thread. Meanwhile messages sent to windows of the calling
    /// thread are answered.
    /// @throws EAbort when the application ends.
    void Synchronize(const std::function<void()>& work);
    /// For the application's thread: whether it is doing work that the given thread waits for in Synchronize. To wait
    /// for that thread would be to wait for ever.
    bool IsAwaitedBy(DWORD threadId) const;
    /// Calls `work` whenever Run ends; in programs without Run, when the application goes, before its components do.
    /// The last work added is called first. Threads have to end at that time: later the system has begun to end the
    /// program, and may hold locks that a thread needs.
    void AtEnd(std::function<void()> work) { FAtEnd.push_back(std::move(work)); }

    void InsertComponent(TComponent* component) override;
    void RemoveComponent(TComponent* component) override;

protected:
    void Notification(TComponent* component, TOperation operation) override;
    virtual void DoIdle(bool& done);
    virtual void DoHint();

private:
    friend class TCustomForm;
    friend class TFormsHost;

    void FormCreated(TCustomForm& form);
    bool ProcessMessage(MSG& message);
    bool OfferMessage(MSG& message);
    bool PreTranslate(MSG& message);
    void PassQuitOn();
    void Idle();
    LRESULT WndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    static LRESULT KX_CALLBACK WindowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    void RunQueue(int frames);
    void ReleaseLater(TCustomForm& form);
    void MessageDone(int frames);
    void RunSynchronized();
    void EndThreads();

    void MouseOver(TControl* control, const TPoint& screenPoint);
    static constexpr UINT_PTR HintTimerId = 1;
    void HintTimer();
    void StopHintTimer();
    void EndHint();
    void ControlGone(const TControl& control);

    struct TQueue;
    std::unique_ptr<TQueue> FQueue;
    const DWORD FThreadId;
    std::vector<std::function<void()>> FAtEnd;
    HWND FHandle = nullptr;
    TCustomForm* FMainForm = nullptr;
    std::string FTitle;
    TIcon FIcon;
    std::atomic<bool> FTerminated = false;
    int FRunLevel = 0;          ///< Calls of Run that are under way.
    bool FPassesQuitOn = false; ///< Another loop, further out, waits for the message that ends the program,
    int FQuitCode = 0;          ///< with this in it.
    bool FHelpOpened = false;   ///< The system's help program may be open for us.
    std::string FHelpFile;
    int FModalLevel = 0;
    struct TReleased {
        TCustomForm* Form;
        int Frames; ///< Messages that were being handled when it was released; at least 1.
    };
    std::vector<TReleased> FReleased;

    bool FShowHint = true;
    int FHintPause = 500;
    TBiDiMode FBiDiMode = bdLeftToRight;
    int FHintHidePause = 2500;
    std::string FHint;
    TControl* FHintControl = nullptr; ///< Under the mouse; whose hint is waited for or shown.
    TPoint FHintPoint;
    bool FHintOfMouse = false; ///< `Hint` is that of a control that the mouse came over.
    bool FHintWaiting = false;
    std::unique_ptr<THintTip> FHintTip;

    TExceptionEvent FOnException;
    TMessageEvent FOnMessage;
    TIdleEvent FOnIdle;
    THelpEvent FOnHelp;
    TNotifyEvent FOnHint;
    TNotifyEvent FOnActivate;
    TNotifyEvent FOnDeactivate;
    TNotifyEvent FOnModalBegin;
    TNotifyEvent FOnModalEnd;
};

} // namespace kx
