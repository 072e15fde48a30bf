// SPDX-License-Identifier: MIT
// Handlers that free or fail under the colour and the print dialog.

#include "BoxDialogTest.h"
#include "tests/support/Printers.h"

#include <stdexcept>

// Handlers of the colour and the print dialog that free it, fail, or open another dialog. The mouse and the keyboard
// act, so that nothing but the system's own dispatching lies between the handler and the message loop.

namespace kx {
namespace {

using namespace test;

constexpr int AddButton = 712;
constexpr int DefineButton = 719;
constexpr int PropertiesButton = 1025;
constexpr int PrinterCombo = 1139;
constexpr int CopiesEdit = 1154;

class DialogLife : public TDialogTest {
protected:
    void SetUp() override { ASSERT_GE(InstalledPrinters().size(), 2u) << NoPrinters; }

    static bool IsOf(const TMessage& m, int control) { return m.Msg == WM_COMMAND && m.WParamLo() == control; }
    static TNotifyEvent Failing(const char* what) {
        return [what](TObject*) { throw std::runtime_error(what); };
    }
    /// A step of what is done once an event has failed with that message.
    TStep Failed(const char* message, const TAction& act) {
        return {std::string("failed: ") + message, [this] { return HasExceptions(); },
                [this, message, act] {
                    EXPECT_THAT(TakeExceptions(), ElementsAre(message));
                    act();
                }};
    }
};

// --- Freed in an event

/// An event of the dialog, its handler, and how the user brings it about.
template <class T> struct TFreeingCase {
    const char* Event;
    std::function<void(T& dialog, const TAction& free)> Connect;
    std::function<std::vector<TStep>(T& dialog)> Act;
};

template <class T> std::string CaseName(const testing::TestParamInfo<TFreeingCase<T>>& info) {
    return info.param.Event;
}

std::vector<TStep> OneClick(const TCommonDialog& dialog, int id) { return {ClickItem(dialog, id)}; }

/// Steps that press a key in a control that has the focus.
std::vector<TStep> Type(const TCommonDialog& dialog, int id, WORD key) {
    return {{"the dialog is shown", Shown(dialog), [&dialog, id] { SetFocus(ItemOf(dialog, id)); }},
            {"the control has the focus", [&dialog, id] { return GetFocus() == ItemOf(dialog, id); },
             [key] { PressKey(key); }}};
}

template <class T> std::vector<TFreeingCase<T>> CommonCases() {
    const auto none = [](T&) { return std::vector<TStep>{}; };
    const auto ok = [](T& dialog) { return OneClick(dialog, IDOK); };
    const auto cancel = [](T& dialog) { return OneClick(dialog, IDCANCEL); };
    const auto isOk = [](const TMessage& m) { return m.Msg == WM_COMMAND && m.WParam == IDOK; };
    return {
        {"InheritedOnShow",
         [](T& d, const TAction& free) { static_cast<TCommonDialog&>(d).SetOnShow([free](TObject*) { free(); }); },
         none},
        {"OnShow", [](T& d, const TAction& free) { d.SetOnShow([free](TObject*) { free(); }); }, none},
        {"InternalShow",
         [](T& d, const TAction& free) { d.SetCommonDialogInternalShowEvent([free](TObject*) { free(); }); }, none},
        {"OnCanClose", [](T& d, const TAction& free) { d.SetOnCanClose([free](TObject*, bool&) { free(); }); }, ok},
        {"OnCloseAfterOk", [](T& d, const TAction& free) { d.SetOnClose([free](TObject*) { free(); }); }, ok},
        {"OnCloseAfterCancel", [](T& d, const TAction& free) { d.SetOnClose([free](TObject*) { free(); }); }, cancel},
        {"OnEventHookingOfOk",
         [isOk](T& d, const TAction& free) {
             d.SetOnEventHooking([free, isOk](TObject*, TMessage& m, bool&) {
                 if (isOk(m)) {
                     free();
                 }
             });
         },
         ok},
        {"OnEventHookOfOk",
         [isOk](T& d, const TAction& free) {
             d.SetOnEventHook([free, isOk](TMessage& m) {
                 if (isOk(m)) {
                     free();
                 }
             });
         },
         ok},
        {"OnEventHookingOfThePlacement",
         [](T& d, const TAction& free) {
             d.CustDlgParams().SetPosition(dpScrCenter);
             d.CustDlgParams().PosParams().SetFitToScreen(true);
             d.SetOnEventHooking([free](TObject*, TMessage& m, bool&) {
                 if (m.Msg == WM_WINDOWPOSCHANGING) {
                     free();
                 }
             });
         },
         none},
        {"OnEventHookingOfTheTitle",
         [](T& d, const TAction& free) {
             d.SetTitle("Title");
             d.SetOnEventHooking([free](TObject*, TMessage& m, bool&) {
                 if (m.Msg == WM_SETTEXT) {
                     free();
                 }
             });
         },
         none},
    };
}

std::vector<TFreeingCase<TKxColorDialog>> ColorCases() {
    using T = TKxColorDialog;
    const auto define = [](T& d) { return OneClick(d, DefineButton); };
    const auto add = [](T& d) { return OneClick(d, AddButton); };
    auto cases = CommonCases<T>();
    cases.push_back({"OnFullOpening",
                     [](T& d, const TAction& free) { d.SetOnFullOpening([free](TObject*, bool&) { free(); }); },
                     define});
    cases.push_back(
        {"OnFullOpen", [](T& d, const TAction& free) { d.SetOnFullOpen([free](TObject*) { free(); }); }, define});
    cases.push_back({"OnCustomColorAdding",
                     [](T& d, const TAction& free) {
                         d.SetOptions({cdFullOpen});
                         d.SetOnCustomColorAdding([free](TObject*, TColor&, bool&) { free(); });
                     },
                     add});
    cases.push_back({"OnCustomColorAdd",
                     [](T& d, const TAction& free) {
                         d.SetOptions({cdFullOpen});
                         d.SetOnCustomColorAdd([free](TObject*, TColor) { free(); });
                     },
                     add});
    cases.push_back({"OnEventHookOfAnEdit",
                     [](T& d, const TAction& free) {
                         d.SetOptions({cdFullOpen});
                         d.SetOnEventHook([free](TMessage& m) {
                             if (m.Msg == WM_COMMAND && m.WParamLo() == 706 && m.WParamHi() == EN_CHANGE &&
                                 IsWindowVisible(GetParent(m.LParamWindow()))) {
                                 free();
                             }
                         });
                     },
                     [](T& d) { return Type(d, 706, '7'); }});
    return cases;
}

std::vector<TFreeingCase<TKxPrintDialog>> PrintCases() {
    using T = TKxPrintDialog;
    const auto properties = [](T& d) { return OneClick(d, PropertiesButton); };
    const auto printer = [](T& d) { return Type(d, PrinterCombo, VK_DOWN); };
    auto cases = CommonCases<T>();
    cases.push_back({"OnPrinterChanging",
                     [](T& d, const TAction& free) { d.SetOnPrinterChanging([free](TObject*, bool&) { free(); }); },
                     printer});
    cases.push_back({"OnPrinterChange",
                     [](T& d, const TAction& free) { d.SetOnPrinterChange([free](TObject*) { free(); }); }, printer});
    cases.push_back({"OnPrinterSetupShowing",
                     [](T& d, const TAction& free) { d.SetOnPrinterSetupShowing([free](TObject*, bool&) { free(); }); },
                     properties});
    cases.push_back({"OnPrinterSetupShow",
                     [](T& d, const TAction& free) { d.SetOnPrinterSetupShow([free](TObject*) { free(); }); },
                     [](T& d) {
                         std::vector<TStep> steps = OneClick(d, PropertiesButton);
                         steps.push_back({"the properties are shown",
                                          [&d] { return ActiveDialog() && ActiveDialog() != d.DialogWindow(); },
                                          [] { Click(GetDlgItem(ActiveDialog(), IDCANCEL)); }});
                         return steps;
                     }});
    cases.push_back({"OnCopiesChange",
                     [](T& d, const TAction& free) {
                         d.SetOnShow([&d, free](TObject*) { d.SetOnCopiesChange([free](TObject*) { free(); }); });
                     },
                     [](T& d) { return Type(d, CopiesEdit, '7'); }});
    return cases;
}

template <class T> class TFreedIn : public DialogLife, public testing::WithParamInterface<TFreeingCase<T>> {
protected:
    void Run() {
        const TFormPtr bottom = MakeForm(clMoneyGreen, 120, 60);
        auto* dialog = new T(nullptr);
        dialog->CustDlgParams().SetBottomForm(bottom.get());
        int freed = 0;
        this->GetParam().Connect(*dialog, [&] {
            if (dialog) {
                ++freed;
                std::exchange(dialog, nullptr)->Free();
            }
        });
        T* const running = dialog;
        EXPECT_FALSE(RunDialog([&] { return running->Execute(); }, this->GetParam().Act(*running)));
        EXPECT_EQ(freed, 1);
        EXPECT_EQ(ActiveDialog(), nullptr) << AllWindowTrees();
        EXPECT_FALSE(bottom->IsDocked());
        EXPECT_TRUE(IsWindowEnabled(Owner->Handle()));
        MSG message;
        EXPECT_EQ(PeekMessageA(&message, nullptr, WM_QUIT, WM_QUIT, PM_NOREMOVE), 0);
    }
};

class ColorFreedIn : public TFreedIn<TKxColorDialog> {};
TEST_P(ColorFreedIn, AHandlerItIsGoneWithoutATrace) { Run(); }
INSTANTIATE_TEST_SUITE_P(All, ColorFreedIn, testing::ValuesIn(ColorCases()), CaseName<TKxColorDialog>);

class PrintFreedIn : public TFreedIn<TKxPrintDialog> {};
TEST_P(PrintFreedIn, AHandlerItIsGoneWithoutATrace) { Run(); }
INSTANTIATE_TEST_SUITE_P(All, PrintFreedIn, testing::ValuesIn(PrintCases()), CaseName<TKxPrintDialog>);

// --- Freed otherwise

TEST_F(DialogLife, TheOwnerMayBeFreedWhileADialogIsShown) {
    const TFormPtr bottom = MakeForm(clMoneyGreen, 120, 60);
    auto* color = new TKxColorDialog(Owner.get());
    color->CustDlgParams().SetBottomForm(bottom.get());
    EXPECT_FALSE(RunDialog(*color, [&] { Owner.reset(); }));
    EXPECT_FALSE(bottom->IsDocked());
    Owner.reset(NewForm<TForm>(nullptr));
    auto* print = new TKxPrintDialog(Owner.get());
    print->CustDlgParams().SetBottomForm(bottom.get());
    EXPECT_FALSE(RunDialog(*print, [&] { Owner.reset(); }));
    EXPECT_FALSE(bottom->IsDocked());
    EXPECT_EQ(ActiveDialog(), nullptr);
}

TEST_F(DialogLife, APrintDialogMayBeFreedWhileThePropertiesAreOpen) {
    auto* dialog = new TKxPrintDialog(nullptr);
    int told = 0;
    dialog->SetOnPrinterSetupShow([&](TObject*) { ++told; });
    EXPECT_FALSE(RunDialog(*dialog, {ClickItem(*dialog, PropertiesButton),
                                     {"the properties are shown",
                                      [&] { return ActiveDialog() && ActiveDialog() != dialog->DialogWindow(); },
                                      [&] { dialog->Free(); }}}));
    EXPECT_EQ(told, 0);
    EXPECT_EQ(ActiveDialog(), nullptr) << AllWindowTrees();
}

TEST_F(DialogLife, AFormMayBeFreedWhileItIsDocked) {
    TFormPtr bottom = MakeForm(clMoneyGreen, 120, 60);
    TKxColorDialog dialog(nullptr);
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    RunDialog(dialog,
              [&] {
                  bottom.reset();
                  Click(ItemOf(dialog, DefineButton));
              },
              {{"the full part is open", [&] { return IsWindowVisible(ItemOf(dialog, AddButton)) != 0; }, {}},
               ClickItem(dialog, IDCANCEL)});
    EXPECT_EQ(dialog.CustDlgParams().BottomForm(), nullptr);
}

// --- Exceptions

TEST_F(DialogLife, ExceptionsOfTheColourDialogsEventsReachTheApplicationAndItGoesOn) {
    const TFormPtr bottom = MakeForm(clMoneyGreen, 120, 60);
    TKxColorDialog dialog(nullptr);
    dialog.CustDlgParams().SetBottomForm(bottom.get());
    dialog.SetOnShow(Failing("show"));
    dialog.SetCommonDialogInternalShowEvent(Failing("internal"));
    dialog.SetOnFullOpening([](TObject*, bool&) { throw std::runtime_error("opening"); });
    dialog.SetOnFullOpen(Failing("open"));
    dialog.SetOnCustomColorAdding([](TObject*, TColor&, bool&) { throw std::runtime_error("adding"); });
    dialog.SetOnCustomColorAdd([](TObject*, TColor) { throw std::runtime_error("add"); });
    dialog.SetOnCanClose([](TObject*, bool&) { throw std::runtime_error("can close"); });
    int height = 0;
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              EXPECT_THAT(TakeExceptions(), ElementsAre("show", "internal"));
                              Click(ItemOf(dialog, DefineButton));
                          },
                          {Failed("opening",
                                  [&] {
                                      EXPECT_FALSE(IsWindowVisible(ItemOf(dialog, AddButton))) << "no consent";
                                      dialog.SetOnFullOpening({});
                                      height = Height(ScreenRectOf(dialog.Handle()));
                                      Click(ItemOf(dialog, DefineButton));
                                  }),
                           Failed("open",
                                  [&] {
                                      EXPECT_EQ(Height(ScreenRectOf(dialog.Handle())), height)
                                          << "the form is visible all the same";
                                      Click(ItemOf(dialog, AddButton));
                                  }),
                           Failed("adding",
                                  [&] {
                                      dialog.SetOnCustomColorAdding({});
                                      Click(ItemOf(dialog, AddButton));
                                  }),
                           Failed("add", [&] { Click(ItemOf(dialog, IDOK)); }),
                           Failed("can close", [&] { dialog.SetOnCanClose({}); }), ClickItem(dialog, IDOK)}));
    EXPECT_EQ(dialog.CustomColors().Values("ColorA"), "000000") << "the one whose event failed was added";
}

TEST_F(DialogLife, ExceptionsOfThePrintDialogsEventsReachTheApplicationAndItGoesOn) {
    TKxPrintDialog dialog(nullptr);
    dialog.SetOnShow(Failing("show"));
    dialog.SetOnPrinterSetupShowing([](TObject*, bool&) { throw std::runtime_error("setup"); });
    dialog.SetOnPrinterChange(Failing("printer"));
    dialog.SetOnCanClose([](TObject*, bool&) { throw std::runtime_error("can close"); });
    EXPECT_TRUE(RunDialog(dialog,
                          [&] {
                              EXPECT_THAT(TakeExceptions(), ElementsAre("show"));
                              Click(ItemOf(dialog, PropertiesButton));
                          },
                          {Failed("setup",
                                  [&] {
                                      EXPECT_EQ(ActiveDialog(), dialog.Handle());
                                      dialog.SetOnCopiesChange(Failing("copies"));
                                      SetFocus(ItemOf(dialog, CopiesEdit));
                                      TypeText("4");
                                  }),
                           Failed("copies",
                                  [&] {
                                      dialog.SetOnCopiesChange({});
                                      SetFocus(ItemOf(dialog, PrinterCombo));
                                      PressKey(VK_DOWN);
                                  }),
                           Failed("printer", [&] { Click(ItemOf(dialog, IDOK)); }),
                           Failed("can close", [&] { dialog.SetOnCanClose({}); }), ClickItem(dialog, IDOK)}));
    EXPECT_EQ(dialog.Printer().Device(), InstalledPrinters()[1]);
}

TEST_F(DialogLife, HooksThatAlwaysFailDoNotStopADialog) {
    TKxColorDialog color(nullptr);
    TKxPrintDialog print(nullptr);
    const auto fail = [](auto& dialog) {
        dialog.SetOnEventHooking([](TObject*, TMessage& m, bool&) {
            if (m.Msg != WM_COMMAND) {
                throw std::runtime_error("hooking");
            }
        });
        dialog.SetOnEventHook([](TMessage&) { throw std::runtime_error("hook"); });
    };
    fail(color);
    fail(print);
    EXPECT_TRUE(RunDialog(color, {ClickItem(color, IDOK)}));
    EXPECT_TRUE(RunDialog(print, {ClickItem(print, IDOK)}));
    const auto messages = TakeExceptions();
    EXPECT_THAT(messages, Contains("hooking"));
    EXPECT_THAT(messages, Contains("hook"));
}

// --- Dialogs inside dialogs

TEST_F(DialogLife, DialogsOpenFromInsideEachOther) {
    const TFormPtr outerForm = MakeForm(clMoneyGreen, 120, 60);
    const TFormPtr innerForm = MakeForm(clSkyBlue, 100, 60);
    TKxPrintDialog outer(Owner.get());
    TKxColorDialog inner(Owner.get());
    outer.CustDlgParams().SetRightForm(outerForm.get());
    inner.CustDlgParams().SetBottomForm(innerForm.get());
    inner.SetColor(clTeal);
    TRect outerPlace;
    outer.SetOnPrinterSetupShowing([&](TObject*, bool& allow) {
        outerPlace = ScreenRectOf(outer.Handle());
        EXPECT_TRUE(RunDialog(inner,
                              [&] {
                                  EXPECT_FALSE(IsWindowEnabled(outer.Handle()));
                                  EXPECT_EQ(GetParent(innerForm->WindowHandle()), inner.Handle());
                                  Screenshot("color_in_print");
                              },
                              {ClickItem(inner, IDOK)}));
        allow = false;
    });
    EXPECT_TRUE(RunDialog(outer, {ClickItem(outer, PropertiesButton),
                                  {"the outer dialog is on top again", Shown(outer),
                                   [&] {
                                       EXPECT_EQ(ScreenRectOf(outer.Handle()), outerPlace);
                                       EXPECT_EQ(GetParent(outerForm->WindowHandle()), outer.Handle());
                                   }},
                                  ClickItem(outer, IDOK)}));
    EXPECT_EQ(inner.Color(), clTeal);
    EXPECT_FALSE(innerForm->IsDocked());
}

TEST_F(DialogLife, ADialogOpensFromTheShowingOfAnother) {
    TKxColorDialog outer(Owner.get());
    TKxPrintDialog inner(Owner.get());
    outer.SetOnShow([&](TObject*) { EXPECT_FALSE(Look(inner)); });
    EXPECT_TRUE(RunDialog([&] { return outer.Execute(); }, {ClickItem(outer, IDOK)}));
}

TEST_F(DialogLife, AShownDialogIsNotShownTwice) {
    TKxColorDialog color(Owner.get());
    TKxPrintDialog print(Owner.get());
    Look(color, [&] {
        EXPECT_THROW(color.Execute(), EInvalidOperation);
        EXPECT_NE(color.Handle(), nullptr);
    });
    Look(print, [&] {
        EXPECT_THROW(print.Execute(), EInvalidOperation);
        EXPECT_NE(print.Handle(), nullptr);
    });
}

} // namespace
} // namespace kx
