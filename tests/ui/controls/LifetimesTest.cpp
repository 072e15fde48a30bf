// SPDX-License-Identifier: MIT
// Whatever a handler frees, in whatever event, nothing that has gone is used, and what stays works on.

#include "tests/ui/HostDialog.h"

#include "kx/ui/widgets/ExtCtrls.h"
#include "kx/ui/widgets/StdCtrls.h"
#include "tests/support/ExceptionLog.h"
#include "tests/support/TestDriver.h"

#include <memory>
#include <optional>
#include <tuple>

namespace kx {
namespace {

using namespace test;

/// Two forms, one of them possibly in a window of the system, with a panel, and in it the control that it is about.
struct TScene {
    explicit TScene(bool docked) : Host(docked ? std::make_unique<THostDialog>() : nullptr) {
        Other = NewForm<TForm>(nullptr);
        Other->SetBounds(600, 400, 200, 100);
        Form = new TForm(nullptr);
        Form->SetBorderStyle(bsNone);
        Form->SetBounds(10, 70, 300, 200);
        Panel = new TPanel(Form);
        Panel->SetAlign(alTop);
        Panel->SetHeight(120);
        Panel->SetParent(Form);
        Upper = new TLabel(Form);
        Upper->SetAutoSize(false);
        Upper->SetAlign(alTop);
        Upper->SetHeight(10);
        Upper->SetParent(Panel);
        Lower = new TLabel(Form);
        Lower->SetAutoSize(false);
        Lower->SetAlign(alTop);
        Lower->SetTop(50);
        Lower->SetParent(Panel);
        Sibling = Add<TEdit>(150);
        Edit = Add<TEdit>(5);
        Button = Add<TButton>(70);
        Combo = Add<TComboBox>(200);
        Paint = new TPaintBox(Form);
        Paint->SetBounds(5, 85, 30, 30);
        Paint->SetParent(Panel);
        for (TComponent* component : std::initializer_list<TComponent*>{Form, Panel, Upper, Lower, Sibling, Edit,
                                                                        Button, Combo, Paint, Other}) {
            Lives.emplace_back(component, TAlive(*component));
        }
    }
    TScene(const TScene&) = delete;
    TScene& operator=(const TScene&) = delete;
    ~TScene() {
        for (TForm* form : {Form, Other}) {
            if (StillLives(form)) {
                form->Free();
            }
        }
    }
    template <class T> T* Add(int left) {
        auto* const control = new T(Form);
        control->SetBounds(left, 60, 60, 21);
        control->SetParent(Panel);
        return control;
    }

    bool StillLives(const TComponent* component) const {
        for (const auto& [object, alive] : Lives) {
            if (object == component) {
                return static_cast<bool>(alive);
            }
        }
        return false;
    }
    void Show() {
        if (Host) {
            Form->SetParentWindow(Host->Window);
        }
        Form->Show();
        Application().ProcessMessages();
    }

    std::unique_ptr<THostDialog> Host;
    TForm* Form;
    TForm* Other;
    TPanel* Panel;
    TLabel* Upper; ///< Aligned; without windows, so that OnResize runs in the caller's own call.
    TLabel* Lower;
    TEdit* Edit;
    TEdit* Sibling;
    TButton* Button;
    TComboBox* Combo;
    TPaintBox* Paint;
    std::vector<std::pair<const TComponent*, TAlive>> Lives;
};

enum class TWay {
    FreesSender,
    FreesParent,
    FreesSibling,
    FreesForm,
    ReleasesForm,
    FreesOther,
    Undocks,
    EndsHost,
    Throws
};

const char* const WayNames[] = {"FreesSender", "FreesParent", "FreesSibling", "FreesForm", "ReleasesForm",
                                "FreesOther",  "Undocks",     "EndsHost",     "Throws"};

using TReaction = std::function<void(TControl* sender)>;

struct TCase {
    const char* Name;
    /// Has `handler` run in the event.
    std::function<void(TScene& scene, const TReaction& handler)> Hook;
    /// Brings the event about. The scene is shown, or it is not.
    std::function<void(TScene& scene)> Fire;
    bool Shown = true;
    bool Docked = true; ///< The event comes in windows of the system too.
};

TNotifyEvent Notify(const TReaction& handler) {
    return [handler](TObject* sender) { handler(static_cast<TControl*>(sender)); };
}
TMouseEvent Mouse(const TReaction& handler) {
    return [handler](TObject* sender, TMouseButton, TShiftState, int, int) { handler(static_cast<TControl*>(sender)); };
}
TKeyEvent Key(const TReaction& handler) {
    return [handler](TObject* sender, uint16_t&, TShiftState) { handler(static_cast<TControl*>(sender)); };
}

void Grow(TForm* form) { form->SetBounds(form->Left(), form->Top(), form->Width() + 10, form->Height() + 10); }
void Send(TWinControl* control, UINT message, WPARAM wParam = 0, LPARAM lParam = MAKELPARAM(3, 3)) {
    SendMessageA(control->WindowHandle(), message, wParam, lParam);
}

const std::vector<TCase>& Cases() {
    static const std::vector<TCase> cases{
        // --- Forms
        {"FormCreate", [](auto& s, auto& h) { s.Form->SetOnCreate(Notify(h)); }, [](auto& s) { s.Show(); }, false},
        {"FormShow", [](auto& s, auto& h) { s.Form->SetOnShow(Notify(h)); }, [](auto& s) { s.Show(); }, false},
        {"FormResizeWhileItsWindowIsMade", [](auto& s, auto& h) { s.Form->SetOnResize(Notify(h)); },
         [](auto& s) { s.Show(); }, false},
        {"FormResize", [](auto& s, auto& h) { s.Form->SetOnResize(Notify(h)); }, [](auto& s) { Grow(s.Form); }},
        {"FormHide", [](auto& s, auto& h) { s.Form->SetOnHide(Notify(h)); }, [](auto& s) { s.Form->Hide(); }},
        {"FormPaint", [](auto& s, auto& h) { s.Form->SetOnPaint(Notify(h)); }, [](auto& s) { s.Form->Repaint(); }},
        {"FormActivate", [](auto& s, auto& h) { s.Form->SetOnActivate(Notify(h)); },
         [](auto& s) {
             s.Other->Show();
             SetActiveWindow(s.Other->WindowHandle());
             SetActiveWindow(s.Form->WindowHandle());
         },
         true, false},
        {"FormDeactivate", [](auto& s, auto& h) { s.Form->SetOnDeactivate(Notify(h)); },
         [](auto& s) {
             SetActiveWindow(s.Form->WindowHandle());
             s.Other->Show();
         },
         true, false},
        {"FormCloseQuery",
         [](auto& s, auto& h) {
             s.Form->SetOnCloseQuery([h](TObject* sender, bool&) { h(static_cast<TControl*>(sender)); });
         },
         [](auto& s) { Send(s.Form, WM_CLOSE); }},
        {"FormClose",
         [](auto& s, auto& h) {
             s.Form->SetOnClose([h](TObject* sender, TCloseAction&) { h(static_cast<TControl*>(sender)); });
         },
         [](auto& s) { Send(s.Form, WM_CLOSE); }},
        {"FormKeyPreview",
         [](auto& s, auto& h) {
             s.Form->SetKeyPreview(true);
             s.Form->SetOnKeyDown(Key(h));
         },
         [](auto& s) { Send(s.Edit, WM_KEYDOWN, 'A', 0); }},
        {"HideWhenUndocked", [](auto& s, auto& h) { s.Form->SetOnHide(Notify(h)); },
         [](auto& s) {
             if (s.Host) {
                 s.Host->Destroy();
             } else {
                 DestroyWindow(s.Form->WindowHandle());
             }
         }},
        // --- Controls
        {"Click", [](auto& s, auto& h) { s.Button->SetOnClick(Notify(h)); }, [](auto& s) { Send(s.Button, BM_CLICK); }},
        {"ClickByAccelerator",
         [](auto& s, auto& h) {
             s.Button->SetCaption("&Go");
             s.Button->SetOnClick(Notify(h));
         },
         [](auto& s) {
             if (s.Host) {
                 Send(s.Edit, WM_SYSCHAR, 'g', 0);
             } else {
                 PostMessageA(s.Edit->WindowHandle(), WM_SYSCHAR, 'g', 0);
                 Application().ProcessMessages();
             }
         }},
        {"Enter", [](auto& s, auto& h) { s.Edit->SetOnEnter(Notify(h)); },
         [](auto& s) {
             ::SetFocus(s.Sibling->Handle());
             ::SetFocus(s.Edit->Handle());
         }},
        {"EnterContainer", [](auto& s, auto& h) { s.Panel->SetOnEnter(Notify(h)); },
         [](auto& s) { ::SetFocus(s.Edit->Handle()); }, false},
        {"Exit", [](auto& s, auto& h) { s.Edit->SetOnExit(Notify(h)); },
         [](auto& s) {
             ::SetFocus(s.Edit->Handle());
             ::SetFocus(s.Sibling->Handle());
         }},
        {"ExitOfAHiddenControl", [](auto& s, auto& h) { s.Edit->SetOnExit(Notify(h)); },
         [](auto& s) {
             ::SetFocus(s.Edit->Handle());
             s.Edit->Hide();
         }},
        {"ExitOfADisabledControl", [](auto& s, auto& h) { s.Edit->SetOnExit(Notify(h)); },
         [](auto& s) {
             ::SetFocus(s.Edit->Handle());
             s.Edit->SetEnabled(false);
         }},
        {"EnterBecauseAnotherIsFreed", [](auto& s, auto& h) { s.Edit->SetOnEnter(Notify(h)); },
         [](auto& s) {
             s.Button->SetEnabled(false);
             s.Combo->SetEnabled(false);
             ::SetFocus(s.Sibling->Handle());
             s.Sibling->Free();
         }},
        {"EnterBecauseAnotherMovesAway", [](auto& s, auto& h) { s.Edit->SetOnEnter(Notify(h)); },
         [](auto& s) {
             s.Button->SetEnabled(false);
             s.Combo->SetEnabled(false);
             ::SetFocus(s.Sibling->Handle());
             s.Sibling->SetParent(s.Form);
         }},
        {"MouseDown", [](auto& s, auto& h) { s.Edit->SetOnMouseDown(Mouse(h)); },
         [](auto& s) { Send(s.Edit, WM_RBUTTONDOWN, MK_RBUTTON); }},
        {"MouseDownOnThePanel", [](auto& s, auto& h) { s.Panel->SetOnMouseDown(Mouse(h)); },
         [](auto& s) { Send(s.Panel, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 100)); }},
        {"MouseUp", [](auto& s, auto& h) { s.Panel->SetOnMouseUp(Mouse(h)); },
         [](auto& s) {
             Send(s.Panel, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 100));
             Send(s.Panel, WM_LBUTTONUP, 0, MAKELPARAM(100, 100));
         }},
        {"ClickOnThePanel", [](auto& s, auto& h) { s.Panel->SetOnClick(Notify(h)); },
         [](auto& s) {
             Send(s.Panel, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(100, 100));
             Send(s.Panel, WM_LBUTTONUP, 0, MAKELPARAM(100, 100));
         }},
        {"ClickOnALabel", [](auto& s, auto& h) { s.Upper->SetOnClick(Notify(h)); },
         [](auto& s) {
             Send(s.Panel, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
             Send(s.Panel, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
         }},
        {"DoubleClick", [](auto& s, auto& h) { s.Panel->SetOnDblClick(Notify(h)); },
         [](auto& s) { Send(s.Panel, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(100, 100)); }},
        {"MouseMove",
         [](auto& s, auto& h) {
             s.Panel->SetOnMouseMove(
                 [h](TObject* sender, TShiftState, int, int) { h(static_cast<TControl*>(sender)); });
         },
         [](auto& s) {
             Send(s.Panel, WM_MOUSELEAVE, 0, 0); // the mouse may happen to be there already
             Send(s.Panel, WM_MOUSEMOVE, 0, MAKELPARAM(100, 100));
         }},
        {"MouseEnter", [](auto& s, auto& h) { s.Panel->SetOnMouseEnter(Notify(h)); },
         [](auto& s) {
             Send(s.Panel, WM_MOUSELEAVE, 0, 0); // the mouse may happen to be there already
             Send(s.Panel, WM_MOUSEMOVE, 0, MAKELPARAM(100, 100));
         }},
        {"MouseEntersALabel", [](auto& s, auto& h) { s.Upper->SetOnMouseEnter(Notify(h)); },
         [](auto& s) {
             Send(s.Panel, WM_MOUSELEAVE, 0, 0);
             Send(s.Panel, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
         }},
        {"MouseLeave", [](auto& s, auto& h) { s.Panel->SetOnMouseLeave(Notify(h)); },
         [](auto& s) { Send(s.Panel, WM_MOUSELEAVE, 0, 0); }},
        {"MouseLeavesALabel", [](auto& s, auto& h) { s.Upper->SetOnMouseLeave(Notify(h)); },
         [](auto& s) {
             Send(s.Panel, WM_MOUSEMOVE, 0, MAKELPARAM(5, 5));
             Send(s.Panel, WM_MOUSELEAVE, 0, 0);
         }},
        {"ContextPopup",
         [](auto& s, auto& h) {
             s.Panel->SetOnContextPopup(
                 [h](TObject* sender, const TPoint&, bool&) { h(static_cast<TControl*>(sender)); });
         },
         [](auto& s) {
             const TPoint at = s.Panel->ClientToScreen({100, 100});
             Send(s.Panel, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(s.Panel->WindowHandle()), MAKELPARAM(at.X, at.Y));
         }},
        {"ContextPopupOfALabel",
         [](auto& s, auto& h) {
             s.Upper->SetOnContextPopup(
                 [h](TObject* sender, const TPoint&, bool&) { h(static_cast<TControl*>(sender)); });
         },
         [](auto& s) {
             const TPoint at = s.Upper->ClientToScreen({2, 2});
             Send(s.Panel, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(s.Panel->WindowHandle()), MAKELPARAM(at.X, at.Y));
         }},
        {"KeyDown", [](auto& s, auto& h) { s.Edit->SetOnKeyDown(Key(h)); },
         [](auto& s) { Send(s.Edit, WM_KEYDOWN, 'A', 0); }},
        {"KeyUp", [](auto& s, auto& h) { s.Edit->SetOnKeyUp(Key(h)); },
         [](auto& s) { Send(s.Edit, WM_KEYUP, 'A', 0); }},
        {"KeyPress",
         [](auto& s, auto& h) {
             s.Edit->SetOnKeyPress([h](TObject* sender, char32_t&) { h(static_cast<TControl*>(sender)); });
         },
         [](auto& s) { Send(s.Edit, WM_CHAR, 'a', 0); }},
        {"Change", [](auto& s, auto& h) { s.Edit->SetOnChange(Notify(h)); }, [](auto& s) { s.Edit->SetText("new"); }},
        {"ControlResize", [](auto& s, auto& h) { s.Edit->SetOnResize(Notify(h)); },
         [](auto& s) { s.Edit->SetBounds(5, 60, 50, 25); }},
        {"AlignedResize", [](auto& s, auto& h) { s.Panel->SetOnResize(Notify(h)); }, [](auto& s) { Grow(s.Form); }},
        {"LabelResize", [](auto& s, auto& h) { s.Upper->SetOnResize(Notify(h)); },
         [](auto& s) { s.Upper->SetHeight(15); }},
        {"AlignedLabelResize", [](auto& s, auto& h) { s.Lower->SetOnResize(Notify(h)); },
         [](auto& s) { Grow(s.Form); }},
        {"ComboResizeWhileItsWindowIsMade", [](auto& s, auto& h) { s.Combo->SetOnResize(Notify(h)); },
         [](auto& s) {
             s.Form->Font().SetHeight(-40);
             s.Show();
         },
         false},
        {"ComboResizeByAFont", [](auto& s, auto& h) { s.Combo->SetOnResize(Notify(h)); },
         [](auto& s) { s.Form->Font().SetHeight(-40); }},
        {"PaintBox", [](auto& s, auto& h) { s.Paint->SetOnPaint(Notify(h)); }, [](auto& s) { s.Panel->Repaint(); }},
        {"ResizeOfTheNeighbourOfAFreedControl",
         [](auto& s, auto& h) {
             s.Upper->SetParent(s.Form);
             s.Panel->SetAlign(alClient);
             s.Panel->SetOnResize(Notify(h));
         },
         [](auto& s) { s.Upper->Free(); }},
        {"ResizeOfTheNeighbourOfAHiddenControl",
         [](auto& s, auto& h) {
             s.Upper->SetParent(s.Form);
             s.Panel->SetAlign(alClient);
             s.Panel->SetOnResize(Notify(h));
         },
         [](auto& s) { s.Upper->Hide(); }},
        {"ResizeOfTheNeighbourOfAControlThatMovesAway",
         [](auto& s, auto& h) {
             s.Upper->SetParent(s.Form);
             s.Panel->SetAlign(alClient);
             s.Panel->SetOnResize(Notify(h));
         },
         [](auto& s) { s.Upper->SetParent(s.Other); }},
        {"ExitOfAControlWhoseWindowIsMadeAnew", [](auto& s, auto& h) { s.Edit->SetOnExit(Notify(h)); },
         [](auto& s) {
             ::SetFocus(s.Edit->Handle());
             s.Edit->SetBorderStyle(bsNone); // makes the window anew
             if (s.StillLives(s.Sibling)) {
                 ::SetFocus(s.Sibling->Handle());
             }
         }},
    };
    return cases;
}

using TParam = std::tuple<size_t, TWay, bool>;

class Lifetimes : public testing::TestWithParam<TParam> {};

/// Frees what the way says. False: the way makes no sense here.
bool Act(TScene& scene, TWay way, TControl* sender) {
    TForm* const form = scene.Form;
    switch (way) {
    case TWay::FreesSender: sender->Free(); return true;
    case TWay::FreesParent:
        if (sender == form) {
            return false;
        }
        sender->Parent()->Free();
        return true;
    case TWay::FreesSibling:
        if (!scene.StillLives(scene.Sibling) || sender == scene.Sibling) {
            return false;
        }
        scene.Sibling->Free();
        return true;
    case TWay::FreesForm: form->Free(); return true;
    case TWay::ReleasesForm: form->Release(); return true;
    case TWay::FreesOther: scene.Other->Free(); return true;
    case TWay::Undocks:
        if (!scene.Host) {
            return false;
        }
        form->SetParentWindow(nullptr);
        return true;
    case TWay::EndsHost:
        if (!scene.Host) {
            return false;
        }
        scene.Host->Destroy();
        return true;
    case TWay::Throws: throw Exception("thrown");
    }
    return false;
}

TEST_P(Lifetimes, NothingThatHasGoneIsUsed) {
    const auto& [index, way, docked] = GetParam();
    const TCase& test = Cases()[index];
    TExceptionLog log;
    std::vector<std::string> thrown;
    TScene scene(docked);
    if (test.Shown) {
        scene.Show();
    }
    int fired = 0;
    bool senseless = false;
    std::optional<TAlive> sender;
    test.Hook(scene, [&, way = way](TControl* control) {
        if (fired++ == 0) {
            sender.emplace(*control);
            senseless = !Act(scene, way, control);
        }
    });
    try {
        test.Fire(scene);
        if (fired == 0) { // before there was a window
            scene.Show();
            test.Fire(scene);
        }
    } catch (const Exception& e) {
        thrown.emplace_back(e.what());
    }
    Application().ProcessMessages();
    if (senseless) {
        return;
    }
    ASSERT_GT(fired, 0) << "the event did not come";
    for (const std::string& message : log.Messages()) {
        thrown.push_back(message);
    }
    if (way == TWay::Throws) {
        EXPECT_THAT(thrown, ElementsAre("thrown"));
    } else if (way != TWay::EndsHost || test.Shown) { // else there is nowhere to be shown
        EXPECT_THAT(thrown, IsEmpty());
    }
    const bool freesForm = way == TWay::FreesForm || way == TWay::ReleasesForm;
    EXPECT_EQ(static_cast<bool>(*sender), !freesForm && way != TWay::FreesSender && way != TWay::FreesParent);
    EXPECT_FALSE(freesForm && scene.StillLives(scene.Form));
    EXPECT_EQ(scene.StillLives(scene.Other), way != TWay::FreesOther);
    if (scene.StillLives(scene.Form)) { // it works on
        scene.Show();
        Grow(scene.Form);
        if (scene.StillLives(scene.Panel)) {
            EXPECT_EQ(scene.Panel->Width(), scene.Form->ClientWidth());
        }
    }
}

std::vector<TParam> Params() {
    std::vector<TParam> params;
    for (size_t i = 0; i < Cases().size(); ++i) {
        for (size_t way = 0; way < std::size(WayNames); ++way) {
            params.emplace_back(i, static_cast<TWay>(way), false);
            if (Cases()[i].Docked) {
                params.emplace_back(i, static_cast<TWay>(way), true);
            }
        }
    }
    return params;
}

INSTANTIATE_TEST_SUITE_P(Events, Lifetimes, testing::ValuesIn(Params()), [](const auto& param) {
    return std::string(Cases()[std::get<0>(param.param)].Name) + "_" +
           WayNames[static_cast<size_t>(std::get<1>(param.param))] + (std::get<2>(param.param) ? "_Docked" : "");
});

} // namespace
} // namespace kx
