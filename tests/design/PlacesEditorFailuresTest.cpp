// SPDX-License-Identifier: MIT
// The editor of a places bar's places when something goes wrong or goes away, and in frames of other systems.

#include "PlacesEditorFixture.h"

#include <memory>

namespace kx::test {
namespace {

class PlacesEditorFailures : public TPlacesEditorTest {};

TEST_F(PlacesEditorFailures, PlacesThatTheRegistryDoesNotTakeStay) {
    constexpr size_t tooLong = 300; // characters in the name of a key
    Dialog->PlacesBar().SetRegistryKey(Key.Path() + "\\" + std::string(tooLong, 'k'));
    TKxPBarEditFrm& editor = Open();
    PressAndDo(*editor.Button4, {AnswerBox(IDYES), AnswerBox(IDOK, [](const std::string& text) {
                                     EXPECT_EQ(text, "The places could not be stored to registry. They stay in the "
                                                     "DFM file.");
                                 })});
    EXPECT_THAT(Names(), ElementsAre("One", "Two", "Three"));
    EXPECT_EQ(Designer.ModifiedCount, 0);
}

TEST_F(PlacesEditorFailures, AKeyOfBackslashesIsAnErrorAndThePlacesStay) {
    Dialog->PlacesBar().SetRegistryKey("\\");
    TKxPBarEditFrm& editor = Open();
    PressAndDo(*editor.Button4, {AnswerBox(IDYES)});
    EXPECT_THAT(TakeExceptions(), ElementsAre("The registry key of the places is empty"));
    EXPECT_EQ(Places().Count(), 3);
}

TEST_F(PlacesEditorFailures, ItsDialogMayGoBeforeTheRegistryQuestionIsAnswered) {
    TKxPBarEditFrm& editor = Open();
    PressAndDo(*editor.Button4,
               {AnswerBox(IDYES, [&](const std::string&) { std::exchange(Dialog, nullptr)->Free(); })});
    EXPECT_TRUE(IsGone());
    EXPECT_THAT(KeysBelow(Key.Path() + "\\Places"), IsEmpty());
    EXPECT_EQ(Designer.ModifiedCount, 0);
}

TEST_F(PlacesEditorFailures, TheQuestionAndTheErrorHaveTheirButtons) {
    const auto buttons = [](std::vector<int> ids) {
        const HWND box = ShownMessageBox();
        std::erase_if(ids, [box](int id) { return !GetDlgItem(box, id); });
        return ids;
    };
    const std::vector<int> all{IDOK, IDCANCEL, IDYES, IDNO};
    TKxPBarEditFrm& editor = Open();
    PressAndDo(*editor.Button4,
               {AnswerBox(IDNO, [&](const std::string&) { EXPECT_THAT(buttons(all), ElementsAre(IDYES, IDNO)); })});
    Dialog->PlacesBar().SetRegistryKey("");
    PressAndDo(*editor.Button4, {AnswerBox(IDOK, [&](const std::string&) {
        EXPECT_THAT(buttons({IDYES, IDNO, IDRETRY}), IsEmpty());
    })});
}

TEST_F(PlacesEditorFailures, TheBarIsMadeAnewThoughNobodyTellsOfTheChange) {
    TKxPBarEditFrm& editor = Open();
    editor.Prop.reset();
    Select(editor, 0);
    PressAndDo(*editor.btnEdit, {InProperties([] {
        Properties().eShort->SetText("Un");
        PressButton(Properties().Button1->Handle());
    })});
    EXPECT_THAT(Captions(editor), ElementsAre("Un", "Two", "Three"));
    PressAndDo(*editor.Button1, {InProperties([] {
        Properties().eShort->SetText("Four");
        Properties().ePath->SetText("C:\\");
        PressButton(Properties().Button1->Handle());
    })});
    EXPECT_THAT(Captions(editor), ElementsAre("Un", "Two", "Three", "Four"));
    PressAndDo(*editor.Button4, {AnswerBox(IDYES)});
    EXPECT_THAT(Captions(editor), IsEmpty());
}

TEST_F(PlacesEditorFailures, AWindowThatIsBeingFreedIsNotRedrawn) {
    TKxPBarEditFrm& editor = Open();
    Places()[0].SetPlaceName("Uno");
    editor.Destroying();
    NotifyItemsModified(Designer);
    EXPECT_THAT(Captions(editor), ElementsAre("One", "Two", "Three"));
    delete &editor; // it cannot be freed any more
}

TEST_F(PlacesEditorFailures, ClosesWhenTheFormIsFreedUnannounced) {
    auto other = std::make_unique<TTestDesigner>();
    auto* const dialog = static_cast<TKxOpenDialog*>(other->CreateComponent(TKxOpenDialog::StaticClass(), nullptr, {}));
    for (const TPropertyEditorPtr& editor : GetPropertyEditors(*other, {&dialog->PlacesBar()})) {
        if (editor->GetName() == "Places") {
            editor->Edit();
        }
    }
    ASSERT_TRUE(PumpUntil(IsOpen<TKxPBarEditFrm>()));
    auto* const editor = Find<TKxPBarEditFrm>();
    EXPECT_EQ(editor->StorageModule, other->Root());
    other.reset();
    EXPECT_EQ(editor->Prop, nullptr);
    EXPECT_EQ(editor->Places(), nullptr);
    EXPECT_TRUE(IsGone());
}

/// While this lives, the system draws the frames of windows thicker.
class TThickFrames {
public:
    explicit TThickFrames(int more) {
        FBefore.cbSize = sizeof FBefore;
        SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof FBefore, &FBefore, 0);
        NONCLIENTMETRICSA metrics = FBefore;
        metrics.iBorderWidth += more;
        SystemParametersInfoA(SPI_SETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    }
    TThickFrames(const TThickFrames&) = delete;
    TThickFrames& operator=(const TThickFrames&) = delete;
    ~TThickFrames() { SystemParametersInfoA(SPI_SETNONCLIENTMETRICS, sizeof FBefore, &FBefore, 0); }

private:
    NONCLIENTMETRICSA FBefore{};
};

TEST_F(PlacesEditorFailures, AThickFrameCutsNothingOff) {
    const TThickFrames thick(4); // as on Windows 10
    TKxPBarEditFrm& editor = Open();
    EXPECT_EQ(editor.ClientWidth(), 174);
    EXPECT_EQ(editor.ClientHeight(), 206);
    EXPECT_EQ(editor.Width(), 190);
    EXPECT_LE(editor.Button4->Left() + editor.Button4->Width(), editor.ClientWidth());
    editor.SetBounds(0, 0, 100, 100);
    EXPECT_EQ(editor.Width(), 190) << "the width is fixed";
    EXPECT_LE(editor.Button4->Top() + editor.Button4->Height(), editor.ClientHeight());
    editor.SetBounds(0, 0, 500, 400);
    EXPECT_EQ(editor.Width(), 190);
    EXPECT_EQ(editor.Height(), 400);
    Screenshot("places-editor-thick", editor.Handle());
}

TEST_F(PlacesEditorFailures, TheWidthIsFixedAndTheHeightHasALeast) {
    TKxPBarEditFrm& editor = Open();
    const int growth = editor.Height() - 233; // by a high frame
    editor.SetBounds(0, 0, 100, 100);
    EXPECT_EQ(editor.Width(), 182);
    EXPECT_EQ(editor.Height(), 209 + growth);
    EXPECT_LE(editor.Button4->Top() + editor.Button4->Height(), editor.ClientHeight());
    editor.SetBounds(0, 0, 500, 400);
    EXPECT_EQ(editor.Width(), 182);
    EXPECT_EQ(editor.Height(), 400);
}

} // namespace
} // namespace kx::test
