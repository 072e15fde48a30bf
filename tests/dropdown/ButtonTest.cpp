#include "dropdown/KxDropDownButton.h"

#include "SysColors.h"
#include "core/FormText.h"
#include "core/Streams.h"
#include "support/Census.h"
#include "support/DialogDriver.h"
#include "support/ExceptionLog.h"
#include "ui/ActnList.h"
#include "ui/Forms.h"

#include <gmock/gmock.h>

namespace kx::test {
namespace {

using testing::ElementsAre;

bool MenuShown() { return ShownMenu() != nullptr; }

TStep MenuKey(WPARAM key) {
    return {"key " + IntToStr(static_cast<int64_t>(key)), MenuShown,
            [key] { PostMessageA(ShownMenu(), WM_KEYDOWN, key, 0); }};
}

/// A form with a drop-down button of 100 x 25 pixels, which another button keeps the focus from.
class BitBtn : public testing::Test {
protected:
    BitBtn() : Form(NewForm<TForm>(nullptr)), Button(new TKxBitBtn(Form.get())), Other(new TButton(Form.get())) {
        Form->SetBounds(100, 100, 300, 200);
        Other->SetParent(Form.get());
        Other->SetBounds(20, 100, 75, 25);
        Other->SetCaption("Other");
        Button->SetParent(Form.get());
        Button->SetBounds(20, 20, 100, 25);
        Button->SetCaption("Open");
        Button->SetOnClick([this](TObject*) { ++Clicks; });
        FillMenu(MenuA, "a");
        FillMenu(MenuB, "b");
    }

    void FillMenu(TPopupMenu& menu, const std::string& prefix) {
        for (int i = 0; i < 3; ++i) {
            auto* const item = new TMenuItem(&menu);
            item->SetCaption(prefix + IntToStr(i));
            item->SetOnClick([this, item](TObject* sender) {
                EXPECT_EQ(sender, item);
                Chosen.push_back(item->Caption());
            });
            menu.Items().Add(item);
        }
        menu.SetOnPopup([this](TObject*) { ++Popups; });
    }
    void Show() {
        Form->Show();
        ASSERT_TRUE(PumpUntil([&] { return Form->Active(); }));
        Other->SetFocus();
        Settle();
    }
    void Settle() {
        MoveMouse({5, 5});
        ASSERT_TRUE(PumpUntil([] {
            MSG message;
            return !PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
        }));
        UpdateWindow(Button->Handle());
    }
    TPoint At(int x, int y = 12) const { return Button->ClientToScreen({x, y}); }

    /// Clicks with the mouse and waits for the menu to open and, by the steps, to close.
    void ClickForMenu(TPoint screen, std::vector<TStep> steps) {
        const int before = Popups;
        RunDialog(
            [&] {
                ClickAt(screen);
                return PumpUntil([&] { return Popups > before && !MenuShown(); });
            },
            std::move(steps));
        PumpUntil([] {
            MSG message;
            return !PeekMessageA(&message, nullptr, 0, 0, PM_NOREMOVE);
        });
    }

    // --- Looks

    COLORREF Pixel(int x, int y) const {
        const TWindowDC dc(Button->WindowHandle());
        return GetPixel(dc.Handle(), x, y);
    }
    /// Bounds of what is black behind the caption, inside the frame.
    TRect Arrow() const {
        TRect bounds{INT_MAX, INT_MAX, 0, 0};
        for (int y = 5; y < 20; ++y) {
            for (int x = 86; x < 97; ++x) {
                if (Pixel(x, y) == 0) {
                    bounds = {std::min(bounds.Left, x), std::min(bounds.Top, y), std::max(bounds.Right, x + 1),
                              std::max(bounds.Bottom, y + 1)};
                }
            }
        }
        return bounds;
    }
    /// The leftmost column with pixels of the caption's colour.
    int CaptionLeft() const {
        for (int x = 8; x < 80; ++x) {
            for (int y = 6; y < 19; ++y) {
                if (Pixel(x, y) == ColorToRGB(clWindowText)) {
                    return x;
                }
            }
        }
        return -1;
    }

    std::unique_ptr<TForm, TFreeDeleter> Form;
    TPopupMenu MenuA;
    TPopupMenu MenuB;
    TKxBitBtn* Button;
    TButton* Other;
    int Clicks = 0;
    int Popups = 0;
    std::vector<std::string> Chosen;
};

// --- Properties

TEST_F(BitBtn, ANewOne) {
    const TKxBitBtn button;
    EXPECT_EQ(button.Margin(), -1);
    EXPECT_EQ(button.Spacing(), 4);
    EXPECT_EQ(button.NumGlyphs(), 1);
    EXPECT_EQ(button.Style(), bsAutoDetect);
    EXPECT_EQ(button.Kind(), bkCustom);
    EXPECT_EQ(button.DropDownMenu(), nullptr);
    EXPECT_EQ(button.SelectedDropDownMenuIndex(), -1);
    EXPECT_FALSE(button.PressingDropDown());
    EXPECT_TRUE(button.ControlStyle().Contains(csReflector));
}

TEST_F(BitBtn, ItsArrowIsTheEmbeddedPicture) {
    EXPECT_EQ(Button->Glyph().Width(), 8);
    EXPECT_EQ(Button->Glyph().Height(), 16);
    EXPECT_EQ(Button->Glyph().PixelFormat(), pf4bit);
    EXPECT_EQ(Button->GetPalette(), nullptr);
}

TEST_F(BitBtn, PublishesItsOwnProperties) {
    for (const char* name : {"Glyph", "Margin", "NumGlyphs", "Style", "Spacing", "CaptionAlignment", "DropDownMenu",
                             "Action", "Anchors", "Caption", "Constraints", "Enabled", "TabStop", "Visible"}) {
        EXPECT_TRUE(IsPublishedProp(*Button, name)) << name;
    }
    EXPECT_THROW(SetOrdProp(*Button, "NumGlyphs", 5), ERangeError);
    EXPECT_THROW(SetOrdProp(*Button, "NumGlyphs", 0), ERangeError);
}

TEST_F(BitBtn, TravelsWithAFormFile) {
    RegisterClasses<TKxBitBtn, TButton>();
    Button->SetName("Go");
    Button->SetMargin(6);
    Button->SetSpacing(2);
    Button->SetCaptionAlignment(taCenter);
    TMemoryStream stream;
    WriteComponent(stream, *Form, TStreamFormat::Binary);
    const std::unique_ptr<TForm, TFreeDeleter> read(NewForm<TForm>(nullptr));
    stream.SetPosition(0);
    ReadComponent(stream, read.get());
    auto& button = dynamic_cast<TKxBitBtn&>(*read->FindComponent("Go"));
    EXPECT_EQ(button.Margin(), 6);
    EXPECT_EQ(button.Spacing(), 2);
    EXPECT_EQ(button.CaptionAlignment(), taCenter);
    EXPECT_EQ(button.Glyph().Width(), 8);
    EXPECT_EQ(button.Glyph().Canvas().Pixels(3, 9), clBlack);
}

// --- Looks

TEST_F(BitBtn, UpItHasARaisedFrameCaptionAndArrow) {
    Show();
    EXPECT_EQ(Arrow(), (TRect{88, 11, 95, 15}));
    EXPECT_EQ(Pixel(91, 14), 0u) << "the tip points down";
    EXPECT_EQ(Pixel(90, 14), ColorToRGB(clBtnFace));
    EXPECT_EQ(Pixel(0, 0), ColorToRGB(clBtnHighlight));
    EXPECT_NE(Pixel(99, 24), ColorToRGB(clBtnHighlight));
    EXPECT_EQ(Pixel(5, 12), ColorToRGB(clBtnFace));
    EXPECT_GT(CaptionLeft(), 20);
    EXPECT_LT(CaptionLeft(), 50);
}

TEST_F(BitBtn, WithTheFocusItHasARimAndADottedFrameLeftOfTheArrow) {
    Show();
    const int caption = CaptionLeft();
    Button->SetFocus();
    Settle();
    EXPECT_EQ(Pixel(0, 0), ColorToRGB(clWindowFrame));
    EXPECT_EQ(Pixel(99, 24), ColorToRGB(clWindowFrame));
    EXPECT_EQ(Arrow(), (TRect{88, 11, 95, 15})) << "nothing moves";
    EXPECT_EQ(CaptionLeft(), caption);
    int dots = 0;
    for (int x = 4; x < 83; ++x) {
        dots += Pixel(x, 4) != ColorToRGB(clBtnFace);
    }
    EXPECT_GE(dots, 38);
    EXPECT_LE(dots, 41);
    for (int x = 83; x < 96; ++x) {
        EXPECT_EQ(Pixel(x, 4), ColorToRGB(clBtnFace)) << x << ": the frame ends one pixel left of the split";
    }
}

TEST_F(BitBtn, AsTheDefaultButtonItHasARimWithoutDots) {
    auto* const edit = new TEdit(Form.get());
    edit->SetParent(Form.get());
    edit->SetBounds(150, 100, 75, 25);
    Button->SetDefault(true);
    Show();
    edit->SetFocus();
    Settle();
    EXPECT_EQ(Pixel(0, 0), ColorToRGB(clWindowFrame));
    for (int x = 4; x < 96; ++x) {
        EXPECT_EQ(Pixel(x, 4), ColorToRGB(clBtnFace)) << x;
    }
}

TEST_F(BitBtn, PressedItsBodyIsFlatAndTheArrowStays) {
    Show();
    Button->SetFocus();
    Settle();
    const int caption = CaptionLeft();
    SendMessageA(Button->Handle(), BM_SETSTATE, TRUE, 0);
    UpdateWindow(Button->Handle());
    EXPECT_EQ(Pixel(1, 12), ColorToRGB(clBtnShadow)) << "the body's flat edge";
    EXPECT_EQ(Pixel(86, 12), ColorToRGB(clBtnShadow)) << "and the one to the arrow";
    EXPECT_EQ(Pixel(2, 12), ColorToRGB(clBtnFace));
    EXPECT_EQ(Arrow().Right - Arrow().Left, 7);
    EXPECT_EQ(Arrow().Left, 88);
    EXPECT_EQ(Arrow().Top, 11);
    EXPECT_EQ(CaptionLeft(), caption + 1);
    SendMessageA(Button->Handle(), BM_SETSTATE, FALSE, 0);
    UpdateWindow(Button->Handle());
    EXPECT_EQ(Arrow(), (TRect{88, 11, 95, 15}));
    EXPECT_EQ(CaptionLeft(), caption);
}

TEST_F(BitBtn, WithThePressedArrowOnlyThatIsFlat) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    const int caption = CaptionLeft();
    TRect arrow;
    COLORREF edge = 0;
    COLORREF body = 0;
    int captionNow = 0;
    ClickForMenu(At(92), {{"look", MenuShown,
                           [&] {
                               arrow = Arrow();
                               edge = Pixel(88, 3);
                               body = Pixel(0, 0);
                               captionNow = CaptionLeft();
                           }},
                          MenuKey(VK_ESCAPE)});
    EXPECT_EQ(arrow, (TRect{89, 12, 96, 16})) << "moved by one";
    EXPECT_EQ(edge, ColorToRGB(clBtnShadow));
    EXPECT_EQ(body, ColorToRGB(clBtnHighlight)) << "the body stays raised";
    EXPECT_EQ(captionNow, caption);
}

TEST_F(BitBtn, DisabledItsCaptionAndItsSinglePictureAreEngraved) {
    const TSysColors colors;
    Button->SetEnabled(false);
    Show();
    EXPECT_EQ(CaptionLeft(), -1);
    EXPECT_EQ(Arrow().Right, 0) << "nothing black is left";
    EXPECT_EQ(Pixel(88, 11), ColorToRGB(clBtnShadow));
    EXPECT_EQ(Pixel(91, 14), ColorToRGB(clBtnShadow)) << "the tip";
    EXPECT_EQ(Pixel(92, 15), ColorToRGB(clBtnHighlight)) << "and its light";
}

TEST_F(BitBtn, DisabledAStripShowsItsSecondPictureInTheSystemsColours) {
    const TSysColors colors;
    TBitmap strip(32, 16);
    strip.Canvas().Brush().SetColor(clOlive);
    strip.Canvas().FillRect({0, 0, 32, 16});
    strip.Canvas().Brush().SetColor(clGray);
    strip.Canvas().FillRect({20, 4, 24, 12});
    strip.Canvas().Brush().SetColor(clWhite);
    strip.Canvas().FillRect({24, 4, 28, 12});
    Button->SetGlyph(strip);
    Button->SetEnabled(false);
    Show();
    EXPECT_EQ(Button->NumGlyphs(), 2);
    EXPECT_EQ(Pixel(64 + 5, 12), ColorToRGB(clBtnShadow)) << "gray, a strip's width from the right edge";
    EXPECT_EQ(Pixel(64 + 9, 12), ColorToRGB(clBtnHighlight)) << "white";
    EXPECT_EQ(Pixel(64 + 1, 12), ColorToRGB(clBtnFace));
}

TEST_F(BitBtn, BecomingTheDefaultKeepsItOwnerDrawn) {
    Show();
    for (const bool value : {true, false, true}) {
        Button->SetDefault(value);
        EXPECT_EQ(GetWindowLongA(Button->Handle(), GWL_STYLE) & BS_TYPEMASK, BS_OWNERDRAW);
    }
    Button->SetFocus();
    EXPECT_EQ(GetWindowLongA(Button->Handle(), GWL_STYLE) & BS_TYPEMASK, BS_OWNERDRAW);
}

TEST_F(BitBtn, ShowsEveryChangeAtOnce) {
    Show();
    Button->Font().SetColor(clRed);
    EXPECT_EQ(CaptionLeft(), -1);
    Button->Font().SetColor(clWindowText);
    Button->SetMargin(10);
    EXPECT_GE(CaptionLeft(), 10);
    EXPECT_LE(CaptionLeft(), 13);
    Button->SetSpacing(10);
    EXPECT_EQ(Pixel(82 + 3, 14), 0u) << "the tip, six pixels to the left";
}

TEST_F(BitBtn, WithoutAnArrowItDrawsItsCaptionOnly) {
    Button->SetGlyph(TBitmap());
    Show();
    EXPECT_EQ(Arrow().Right, 0);
    EXPECT_GT(CaptionLeft(), 0);
}

// --- Presses

TEST_F(BitBtn, APressAtTheSplitIsOneOnTheBodyAndBehindItOneOnTheArrow) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickAt(At(84));
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 1; }));
    EXPECT_EQ(Popups, 0);
    ClickForMenu(At(85), {MenuKey(VK_ESCAPE)});
    EXPECT_EQ(Popups, 1);
    EXPECT_EQ(Clicks, 1);
}

TEST_F(BitBtn, TheMenuOpensUnderItsLeftEdge) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    TRect menu;
    ClickForMenu(At(95), {{"look", MenuShown, [&] { menu = ScreenRectOf(ShownMenu()); }}, MenuKey(VK_ESCAPE)});
    const TRect button = ScreenRectOf(Button->Handle());
    EXPECT_EQ(menu.Left, button.Left);
    EXPECT_EQ(menu.Top, button.Bottom);
}

TEST_F(BitBtn, ClosingTheMenuWithoutAChoiceLetsGoOfTheMouse) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {MenuKey(VK_ESCAPE)});
    EXPECT_EQ(GetCapture(), nullptr);
    EXPECT_EQ(SendMessageA(Button->Handle(), BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    EXPECT_EQ(Clicks, 0);
    EXPECT_TRUE(Chosen.empty());
    ClickAt(CenterOf(Other->Handle()));
    EXPECT_TRUE(PumpUntil([&] { return Other->Focused(); })) << "the next click goes where it is made";
}

TEST_F(BitBtn, ADoubleClickOnTheArrowOpensTheMenuAndClosesTheState) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    DoubleClickAt(At(95));
    EXPECT_TRUE(PumpUntil([&] { return Popups == 1 && !MenuShown() && !Button->PressingDropDown(); }));
    EXPECT_EQ(Popups, 1);
    EXPECT_EQ(Clicks, 0);
    EXPECT_EQ(GetCapture(), nullptr);
}

TEST_F(BitBtn, ADoubleClickOnTheBodyIsTwoClicks) {
    Show();
    DoubleClickAt(At(30));
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 2; }));
}

TEST_F(BitBtn, TheSecondPressOnTheArrowClosesItsState) {
    Show();
    const auto press = [&](int x) { SendMessageA(Button->Handle(), WM_LBUTTONDOWN, MK_LBUTTON, MakeLParam(x, 12)); };
    press(95);
    EXPECT_TRUE(Button->PressingDropDown()) << "without a menu only the look changes";
    press(95);
    EXPECT_FALSE(Button->PressingDropDown());
    press(95);
    press(10);
    EXPECT_FALSE(Button->PressingDropDown()) << "by a press on the body";
    SendMessageA(Button->Handle(), WM_LBUTTONUP, 0, MakeLParam(-10, -10));
    press(95);
    EXPECT_TRUE(Button->PressingDropDown());
    SendMessageA(Button->Handle(), WM_LBUTTONUP, 0, MakeLParam(-10, -10));
    EXPECT_TRUE(Button->PressingDropDown());
    Other->SetFocus();
    EXPECT_FALSE(Button->PressingDropDown()) << "by the loss of the focus";
    EXPECT_EQ(Clicks, 0);
}

TEST_F(BitBtn, TheKeyboardAndItsDefaultClickIt) {
    Show();
    Button->SetFocus();
    PressKey(VK_SPACE);
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 1; }));
    PressKey(VK_RETURN);
    // Return is the application's, which sees it before the button does.
    for (const ULONGLONG end = GetTickCount64() + 30'000; Clicks < 2 && GetTickCount64() < end;) {
        MsgWaitForMultipleObjects(0, nullptr, FALSE, 20, QS_ALLINPUT);
        Application().ProcessMessages();
    }
    EXPECT_EQ(Clicks, 2);
    EXPECT_EQ(Popups, 0);
}

TEST_F(BitBtn, ACloseButtonClosesItsForm) {
    Button->SetKind(bkClose);
    Show();
    ClickAt(At(30));
    EXPECT_TRUE(PumpUntil([&] { return !Form->Visible(); }));
    EXPECT_EQ(Clicks, 0);
    Button->SetKind(bkHelp);
    Button->Click();
    EXPECT_EQ(Clicks, 1) << "without help the click is an ordinary one";
}

// --- Choices

TEST_F(BitBtn, ChoosingAnItemRunsItsOwnHandlerAfterTheMouseIsFree) {
    Button->SetDropDownMenu(&MenuA);
    HWND capture = Button->Handle();
    MenuB.Items()[0]->SetOnClick({}); // not attached
    TMenuItem* const second = MenuA.Items()[1];
    Button->SetDropDownMenu(nullptr);
    const TNotifyEvent own = second->OnClick();
    second->SetOnClick([&, own](TObject* sender) {
        capture = GetCapture();
        own(sender);
    });
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {MenuKey(VK_DOWN), MenuKey(VK_DOWN), MenuKey(VK_RETURN)});
    EXPECT_TRUE(PumpUntil([&] { return !Chosen.empty(); }));
    EXPECT_THAT(Chosen, ElementsAre("a1"));
    EXPECT_EQ(capture, nullptr);
    EXPECT_EQ(Clicks, 0) << "it is no click of the button";
    EXPECT_EQ(SendMessageA(Button->Handle(), BM_GETSTATE, 0, 0) & BST_PUSHED, 0);
    EXPECT_EQ(Button->SelectedDropDownMenuIndex(), -1) << "whatever is chosen";
}

TEST_F(BitBtn, ChoosingWithTheMouseWorksToo) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {{"click the last item", MenuShown, [] {
                               const TRect menu = ScreenRectOf(ShownMenu());
                               ClickAt({menu.Left + 15, menu.Bottom - 8});
                           }}});
    EXPECT_TRUE(PumpUntil([&] { return !Chosen.empty(); }));
    EXPECT_THAT(Chosen, ElementsAre("a2"));
}

TEST_F(BitBtn, AnotherMenuGivesTheFirstOneItsHandlersBack) {
    const TNotifyEvent ownA = MenuA.Items()[0]->OnClick();
    const TNotifyEvent ownB = MenuB.Items()[0]->OnClick();
    Button->SetDropDownMenu(&MenuA);
    EXPECT_FALSE(MenuA.Items()[0]->OnClick() == ownA);
    Button->SetDropDownMenu(&MenuB);
    EXPECT_TRUE(MenuA.Items()[0]->OnClick() == ownA);
    EXPECT_FALSE(MenuB.Items()[0]->OnClick() == ownB);
    MenuB.Items()[2]->Click();
    EXPECT_THAT(Chosen, ElementsAre("b2"));
    Button->SetDropDownMenu(&MenuB);
    MenuB.Items()[1]->Click();
    EXPECT_THAT(Chosen, ElementsAre("b2", "b1")) << "once, attached again or not";
    Button->SetDropDownMenu(nullptr);
    EXPECT_TRUE(MenuB.Items()[0]->OnClick() == ownB);
}

TEST_F(BitBtn, ItemsOfSubmenusKeepTheirHandlers) {
    auto* const inner = new TMenuItem(&MenuA);
    const TNotifyEvent own = [this](TObject*) { Chosen.emplace_back("inner"); };
    inner->SetOnClick(own);
    MenuA.Items()[0]->Add(inner);
    Button->SetDropDownMenu(&MenuA);
    EXPECT_TRUE(inner->OnClick() == own);
}

TEST_F(BitBtn, AMenuThatChangesMeanwhileGetsEachHandlerBackToItsItem) {
    const TNotifyEvent own1 = MenuA.Items()[1]->OnClick();
    Button->SetDropDownMenu(&MenuA);
    MenuA.Items()[0]->Free();
    auto* const added = new TMenuItem(&MenuA);
    MenuA.Items().Insert(0, added);
    MenuA.Items().Add(new TMenuItem(&MenuA));
    const TNotifyEvent replaced = [](TObject*) {};
    MenuA.Items()[2]->SetOnClick(replaced);
    Button->SetDropDownMenu(nullptr);
    EXPECT_FALSE(added->OnClick());
    EXPECT_TRUE(MenuA.Items()[1]->OnClick() == own1);
    EXPECT_TRUE(MenuA.Items()[2]->OnClick() == replaced) << "what the application set stays";
}

// --- Whoever goes first

TEST_F(BitBtn, TheButtonGoesFirstAndGivesTheHandlersBack) {
    const TNotifyEvent own = MenuA.Items()[0]->OnClick();
    Button->SetDropDownMenu(&MenuA);
    Button->Free();
    EXPECT_TRUE(MenuA.Items()[0]->OnClick() == own);
    MenuA.Items()[0]->Click();
    EXPECT_THAT(Chosen, ElementsAre("a0"));
}

TEST_F(BitBtn, TheMenuGoesFirst) {
    auto menu = std::make_unique<TPopupMenu>();
    FillMenu(*menu, "m");
    Button->SetDropDownMenu(menu.get());
    menu.reset();
    EXPECT_EQ(Button->DropDownMenu(), nullptr);
    Button->ShowDropDownMenu();
    EXPECT_EQ(Popups, 0);
}

TEST_F(BitBtn, BothGoTogetherWithTheirOwner) {
    for (const bool menuFirst : {true, false}) {
        TComponent owner;
        auto* const menu = menuFirst ? new TPopupMenu(&owner) : nullptr;
        auto* const button = new TKxBitBtn(&owner);
        auto* const used = menu ? menu : new TPopupMenu(&owner);
        FillMenu(*used, "m");
        button->SetDropDownMenu(used);
    }
}

TEST_F(BitBtn, TwoButtonsOnOneMenuMayGoInAnyOrder) {
    const TNotifyEvent own = MenuA.Items()[0]->OnClick();
    auto first = std::make_unique<TKxBitBtn>();
    auto second = std::make_unique<TKxBitBtn>();
    first->SetDropDownMenu(&MenuA);
    second->SetDropDownMenu(&MenuA);
    first.reset();
    MenuA.Items()[0]->Click();
    EXPECT_THAT(Chosen, ElementsAre("a0"));
    second.reset();
    MenuA.Items()[0]->Click();
    EXPECT_THAT(Chosen, ElementsAre("a0", "a0"));
}

TEST_F(BitBtn, AHandlerMayFreeItsButton) {
    MenuA.Items()[0]->SetOnClick([this](TObject*) {
        Button->Free();
        Chosen.emplace_back("freed");
    });
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {MenuKey(VK_DOWN), MenuKey(VK_RETURN)});
    EXPECT_TRUE(PumpUntil([&] { return !Chosen.empty(); }));
    MenuA.Items()[1]->Click();
    EXPECT_THAT(Chosen, ElementsAre("freed", "a1"));
}

TEST_F(BitBtn, TheButtonMayGoWhileItsMenuIsOpen) {
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {{"free it", MenuShown, [&] { Button->Free(); }}, MenuKey(VK_ESCAPE)});
    Button = new TKxBitBtn(Form.get());
    EXPECT_EQ(Popups, 1);
}

TEST_F(BitBtn, AHandlerThatThrowsReachesTheApplication) {
    const TExceptionLog log;
    MenuA.Items()[0]->SetOnClick([](TObject*) { throw EInvalidOperation("no such choice"); });
    Button->SetDropDownMenu(&MenuA);
    Show();
    ClickForMenu(At(95), {MenuKey(VK_DOWN), MenuKey(VK_RETURN)});
    EXPECT_TRUE(PumpUntil([&] { return !log.Messages().empty(); }));
    EXPECT_THAT(log.Messages(), ElementsAre("no such choice"));
    EXPECT_EQ(GetCapture(), nullptr);
    MenuA.SetOnPopup([](TObject*) { throw EInvalidOperation("no menu"); });
    ClickAt(At(30)); // ends the state of the arrow
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 1; }));
    ClickAt(At(95));
    EXPECT_TRUE(PumpUntil([&] { return log.Messages().size() == 2; }));
    EXPECT_EQ(log.Messages().back(), "no menu");
    ClickAt(At(30));
    EXPECT_TRUE(PumpUntil([&] { return Clicks == 2; }));
}

// --- Actions

TEST_F(BitBtn, AnActionGivesItsImageOnlyToAButtonWithoutAPicture) {
    TImageList images(20, 18);
    TBitmap image(20, 18);
    image.Canvas().Brush().SetColor(clLime);
    image.Canvas().FillRect({0, 0, 20, 18});
    image.Canvas().Brush().SetColor(clBlue);
    image.Canvas().FillRect({5, 5, 15, 13});
    images.AddMasked(&image, clLime);
    TActionList list;
    list.SetImages(&images);
    kx::TAction action;
    action.SetActionList(&list);
    action.SetCaption("From the action");
    action.SetImageIndex(0);
    Button->SetAction(&action);
    EXPECT_EQ(Button->Caption(), "From the action");
    EXPECT_EQ(Button->Glyph().Width(), 8) << "the arrow stays";
    Button->SetGlyph(TBitmap());
    Button->SetAction(&action);
    ASSERT_EQ(Button->Glyph().Width(), 20);
    EXPECT_EQ(Button->Glyph().Height(), 18);
    EXPECT_EQ(Button->Glyph().Canvas().Pixels(10, 9), clBlue);
    EXPECT_EQ(Button->Glyph().Canvas().Pixels(0, 0), clFuchsia);
    EXPECT_EQ(Button->Glyph().TransparentColor(), clFuchsia);
    Button->SetGlyph(TBitmap());
    action.SetImageIndex(1);
    Button->SetAction(&action);
    EXPECT_TRUE(Button->Glyph().Empty()) << "no such image";
}

TEST_F(BitBtn, KeepsNothingOfTheSystemsWhenItGoes) {
    Show();
    const auto round = [&] {
        for (int i = 0; i < 10; ++i) {
            auto* const button = new TKxBitBtn(Form.get());
            button->SetParent(Form.get());
            button->SetBounds(150, 20 + i, 100, 25);
            button->SetDropDownMenu(&MenuA);
            button->SetEnabled(i % 2 == 0);
            button->Update();
            button->Free();
        }
    };
    round();
    const TCensus before = GdiCensus() + UserCensus();
    round();
    EXPECT_EQ(Describe(before, GdiCensus() + UserCensus()), "");
}

/// All looks beside each other, for the eye.
TEST_F(BitBtn, LooksLikeThis) {
    Button->SetDropDownMenu(&MenuA);
    const auto add = [&](int x, int y, const std::string& caption) {
        auto* const button = new TKxBitBtn(Form.get());
        button->SetParent(Form.get());
        button->SetBounds(x, y, 100, 25);
        button->SetCaption(caption);
        return button;
    };
    TKxBitBtn* const disabled = add(140, 20, "Disabled");
    disabled->SetEnabled(false);
    TKxBitBtn* const strip = add(20, 55, "Strip");
    TBitmap pictures(32, 16);
    pictures.Canvas().Brush().SetColor(clOlive);
    pictures.Canvas().FillRect({0, 0, 32, 16});
    pictures.Canvas().Brush().SetColor(clNavy);
    pictures.Canvas().FillRect({3, 3, 13, 13});
    pictures.Canvas().Brush().SetColor(clWhite);
    pictures.Canvas().FillRect({20, 4, 30, 14});
    pictures.Canvas().Brush().SetColor(clGray);
    pictures.Canvas().FillRect({19, 3, 29, 13});
    strip->SetGlyph(pictures);
    TKxBitBtn* const stripDisabled = add(140, 55, "Strip off");
    stripDisabled->SetGlyph(pictures);
    stripDisabled->SetEnabled(false);
    TKxBitBtn* const down = add(140, 100, "Down");
    TKxBitBtn* const focused = add(20, 135, "Focused");
    TKxBitBtn* const focusedDown = add(140, 135, "Arrow down");
    Show();
    focused->SetFocus();
    SendMessageA(down->Handle(), BM_SETSTATE, TRUE, 0);
    SendMessageA(focusedDown->Handle(), WM_LBUTTONDOWN, MK_LBUTTON, MakeLParam(95, 12));
    ReleaseCapture();
    Settle();
    EXPECT_NE(Screenshot("drop-down-buttons", Form->Handle()), "");
    focused->SetFocus();
    SendMessageA(focused->Handle(), BM_SETSTATE, TRUE, 0);
    Settle();
    EXPECT_NE(Screenshot("drop-down-button-pressed", Form->Handle()), "");
}

} // namespace
} // namespace kx::test
