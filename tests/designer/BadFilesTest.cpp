// SPDX-License-Identifier: MIT
// Files that cannot be read or written, and projects whose forms are not there.

#include "WindowFixture.h"

#include "kx/core/Barrier.h"
#include "kx/win/FileStreams.h"
#include "kx/win/Handles.h"
#include "tests/support/ImportPatch.h"
#include "tests/support/Process.h"

namespace kx::test {
namespace {

/// Does what it should not while a form is read.
class TBadTempered : public TButton {
    KX_CLASS()
    explicit TBadTempered(TComponent* owner) : TButton(owner) {
        if (Throws == 'c') {
            throw EInvalidOperation("out of paper");
        }
    }
    int Mood() const { return 0; }
    void SetMood(int) { throw EInvalidOperation("not today"); }
    void Loaded() override {
        TButton::Loaded();
        if (Throws == 'l') {
            throw EInvalidOperation("too late");
        }
    }
    static inline char Throws = 0;
};
const TClass& TBadTempered::StaticClass() {
    static const TClassBuilder<TBadTempered> cls("TBadTempered", TButton::StaticClass(), [](auto& c) {
        c.Creatable();
        c.Property("Mood", &TBadTempered::Mood, &TBadTempered::SetMood);
    });
    return cls.Class();
}

class BadFiles : public TDesignerWindowTest {
protected:
    BadFiles() { RegisterClass(TBadTempered::StaticClass()); }
    ~BadFiles() override { TBadTempered::Throws = 0; }

    void Move() {
        The("OkButton").SetLeft(24);
        ASSERT_TRUE(Designer().Record("Move"));
    }
    /// Saving fails with that message, and the file, the form and the folder are as before.
    void ExpectSaveFails(const std::string& says) {
        const std::string state = Designer().State();
        EXPECT_THAT(AnswerTo([&] { Window->Command("Save"); }, IDOK), HasSubstr(says));
        EXPECT_EQ(FileText(), SampleForm);
        EXPECT_EQ(Designer().State(), state);
        EXPECT_TRUE(Window->Document()->IsModified());
        EXPECT_FALSE(Folder.Contains("OrderForm.dfm.~new"));
    }
    /// The file cannot be opened, which is told; nothing of it is shown, and the file stays.
    void ExpectOpenFails(const std::string& text, const std::string& says) {
        designer::WriteWholeFile(Path, text);
        bool opened = true;
        EXPECT_THAT(AnswerTo([&] { opened = Window->OpenPath(Path); }, IDOK), HasSubstr(says));
        EXPECT_FALSE(opened);
        EXPECT_EQ(Window->Document(), nullptr);
        EXPECT_EQ(FileText(), text);
    }
};

// --- Reading

TEST_F(BadFiles, AFormThatIsCutOffAnywhereIsRefusedOrReadWhole) {
    const std::string text = SampleForm;
    const std::string binary = designer::FormBinaryOfText(text);
    for (const std::string& whole : {text, binary}) {
        for (size_t length = 0; length + 1 < whole.size(); length += 1 + whole.size() / 40) {
            ExpectOpenFails(whole.substr(0, length), "");
        }
    }
}

TEST_F(BadFiles, BytesOfAnythingElseAreNoForm) {
    std::string bytes;
    for (int i = 0; i < 3000; ++i) {
        bytes += static_cast<char>(i * i % 251);
    }
    ExpectOpenFails(bytes, "");
    ExpectOpenFails(std::string(300, '\0'), "");
    ExpectOpenFails("TPF0" + bytes, "");
    ExpectOpenFails("\xFF\xFE" + bytes, "");
}

TEST_F(BadFiles, AComponentThatThrowsWhileItIsReadIsNamed) {
    const std::string form = "object Form: TForm9\n  object Sulky: TBadTempered\n    Left = 8\n  end\nend\n";
    TBadTempered::Throws = 'c';
    ExpectOpenFails(form, "out of paper");
    TBadTempered::Throws = 'l';
    ExpectOpenFails(form, "too late");
    TBadTempered::Throws = 0;
    EXPECT_TRUE(Window->OpenPath(Path)) << "nothing of the attempts is left";
    EXPECT_EQ(Text(), form);
}

TEST_F(BadFiles, AValueThatIsRefusedIsToldOfWithItsProperty) {
    ExpectOpenFails("object Form: TForm9\n  object Sulky: TBadTempered\n    Mood = 3\n  end\nend\n", "Mood");
}

TEST_F(BadFiles, AFormOfTwentyMegabytesOpensAndComesBack) {
    std::string text = "object Big: TBig\n  ClientHeight = 100\n  ClientWidth = 100\n  object Film: TFilm\n"
                       "    Data = {\n";
    constexpr size_t megabytes = KX_TEST_GUARDED != 0 ? 2 : 20;
    const std::string line = "      0123456789ABCDEF0123456789ABCDEF0123456789ABCDEF0123456789ABCDEF\n";
    while (text.size() < megabytes << 20U) {
        text += line;
    }
    text.back() = '}';
    text += "\n  end\nend\n";
    designer::WriteWholeFile(Path, text);
    ASSERT_TRUE(Window->OpenPath(Path));
    EXPECT_FALSE(Window->Document()->IsModified());
    EXPECT_EQ(The<TComponent>("Film").FormClassName(), "TFilm");
    Designer().Form().SetCaption("Large");
    ASSERT_TRUE(Designer().Record("Caption"));
    Window->Command("Save");
    const std::string saved = FileText();
    EXPECT_EQ(saved.size(), text.size() + std::string("  Caption = 'Large'\n").size());
    Designer().Undo();
    Window->Command("Save");
    EXPECT_TRUE(FileText() == text);
}

TEST_F(BadFiles, AFormOfTwentyMegabytesInManyComponentsOpensAndComesBack) {
    constexpr int count = KX_TEST_GUARDED != 0 ? 200 : 2000;
    const std::string hint(64, 'h');
    std::string text = "object Big: TBig\n  ClientHeight = 400\n  ClientWidth = 600\n";
    for (int i = 0; i < count; ++i) {
        text += "  object Part" + IntToStr(i) + ": TPart\n    Left = " + IntToStr(int64_t{i} % 60 * 10) +
                "\n    Lines.Strings = (\n";
        for (int line = 0; line < 140; ++line) {
            text += "      '" + hint + "'\n";
        }
        text.pop_back();
        text += ")\n  end\n";
    }
    text += "end\n";
    ASSERT_GT(text.size(), static_cast<size_t>(count) * 10'000);
    designer::WriteWholeFile(Path, text);
    ASSERT_TRUE(Window->OpenPath(Path));
    EXPECT_FALSE(Window->Document()->IsModified());
    EXPECT_EQ(Designer().AllComponents().size(), static_cast<size_t>(count) + 1);
    The("Part7").SetLeft(71);
    ASSERT_TRUE(Designer().Record("Move"));
    Window->Command("Save");
    EXPECT_NE(FileText().find("    Left = 71\n"), std::string::npos);
    Designer().Undo();
    Window->Command("Save");
    EXPECT_TRUE(FileText() == text);
}

// --- Writing

BOOL WINAPI WriteToFullDisk(HANDLE, const void*, DWORD count, DWORD* written, OVERLAPPED*) {
    *written = count / 2; // what was left
    SetLastError(ERROR_DISK_FULL);
    return FALSE;
}

TEST_F(BadFiles, AFullDiskLeavesFileAndFormAsTheyWere) {
    Open();
    Move();
    {
        const TImportPatch full("WriteFile", reinterpret_cast<void*>(WriteToFullDisk));
        ExpectSaveFails("OrderForm.dfm");
    }
    Window->Command("Save");
    EXPECT_THAT(FileText(), HasSubstr("Left = 24"));
}

TEST_F(BadFiles, AFileThatOthersHoldIsNotReplaced) {
    Open();
    Move();
    {
        const TFileStream held(Path, fmOpenRead | fmShareDenyNone); // which lets nobody delete it
        ExpectSaveFails("OrderForm.dfm");
    }
    Window->Command("Save");
    EXPECT_FALSE(Window->Document()->IsModified());
}

TEST_F(BadFiles, AFolderThatIsGoneIsToldOf) {
    const std::string inside = Folder.AddFile("sub\\Inner.dfm", SampleForm);
    ASSERT_TRUE(Window->OpenPath(inside));
    Move();
    ASSERT_TRUE(DeleteFileA(inside.c_str()));
    ASSERT_TRUE(RemoveDirectoryA(Folder.Path("sub").c_str()));
    // The file has gone, which others have done: first that is asked, then told.
    std::string said;
    TTestDriver driver({AnswerBox(IDYES), AnswerBox(IDOK, [&](const std::string& text) { said = text; })});
    driver.Run([&] {
        Window->Command("Save");
        return true;
    });
    EXPECT_THAT(said, HasSubstr("Inner.dfm"));
    EXPECT_TRUE(Window->Document()->IsModified());
    EXPECT_EQ(The("OkButton").Left(), 24);
    Window->Document()->UpdateRecovery(); // has no place either
}

TEST_F(BadFiles, AFaultOfTheDesignerLeavesACopyThatTheNextStartOffers) {
    RunProgram("program\\kx_designer_program.exe", "\"" + Path + "\"");
    EXPECT_EQ(FileText(), SampleForm);
    ASSERT_TRUE(Folder.Contains("OrderForm.dfm.~recover"));
    EXPECT_THAT(AnswerTo([&] { Window->OpenPath(Path); }, IDYES), HasSubstr("were not saved"));
    EXPECT_EQ(Designer().Form().Caption(), "before the fault");
    EXPECT_TRUE(Window->Document()->IsModified());
}

TEST_F(BadFiles, ACopyThatCannotBeReadIsToldOfAndTheFileIsShown) {
    Folder.AddFile("OrderForm.dfm.~recover", "TPF0 and nothing more");
    std::string said;
    TTestDriver driver({AnswerBox(IDYES), AnswerBox(IDOK, [&](const std::string& text) { said = text; })});
    driver.Run([&] { return Window->OpenPath(Path); });
    EXPECT_THAT(said, testing::Not(IsEmpty()));
    EXPECT_EQ(Text(), SampleForm);
    EXPECT_FALSE(Window->Document()->IsModified());
}

// --- Projects

TEST_F(BadFiles, AProjectWhoseFormsHaveMovedOpensTheOthers) {
    const std::string file =
        Folder.AddFile("Shop.kxproj", "object Project: TProject\n  Forms.Strings = (\n    '..\\away\\Gone.dfm'\n"
                                      "    'OrderForm.dfm')\nend\n");
    EXPECT_THAT(AnswerTo([&] { Window->OpenPath(file); }, IDOK), HasSubstr("Gone.dfm"));
    ASSERT_EQ(Window->Project()->ModuleCount(), 2);
    EXPECT_FALSE(Window->Project()->Module(0).IsOpen());
    Window->Project()->Module(1).Open();
    EXPECT_EQ(Window->Document(), &Window->Project()->Module(1));
}

} // namespace
} // namespace kx::test
