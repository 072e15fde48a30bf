// SPDX-License-Identifier: MIT
// The program as it is called: its output, its messages and its exit status.

#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace kx {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr char Good[] =
    "object F: TF\r\n  Caption = 'a'\r\n  OnClick = FClick\r\n  object B: TButton\r\n  end\r\nend\r\n";

struct TResult {
    int Status = -1;
    std::string Output;
    std::string Messages;
};

class KxForm : public testing::Test {
protected:
    KxForm() {
        std::string pattern = (std::filesystem::temp_directory_path() / "kx-form-XXXXXX").string();
        FFolder = mkdtemp(pattern.data());
    }
    ~KxForm() override { std::filesystem::remove_all(FFolder); }

    std::string Path(std::string_view name) const { return FFolder + "/" + std::string(name); }

    std::string Write(std::string_view name, std::string_view bytes) const {
        std::FILE* const file = std::fopen(Path(name).c_str(), "wb");
        std::fwrite(bytes.data(), 1, bytes.size(), file);
        std::fclose(file);
        return Path(name);
    }

    std::string Read(std::string_view name) const {
        std::string bytes;
        std::FILE* const file = std::fopen(Path(name).c_str(), "rb");
        char buffer[65536];
        for (size_t count; file && (count = std::fread(buffer, 1, sizeof buffer, file)) > 0;) {
            bytes.append(buffer, count);
        }
        if (file) {
            std::fclose(file);
        }
        return bytes;
    }

    /// Calls the program as a shell does.
    TResult Call(const std::string& arguments) const {
        const std::string command =
            std::string(KX_FORM) + " " + arguments + " >'" + Path("out") + "' 2>'" + Path("err") + "'";
        TResult result;
        result.Status = WEXITSTATUS(std::system(command.c_str()));
        result.Output = Read("out");
        result.Messages = Read("err");
        return result;
    }

private:
    std::string FFolder;
};

TEST_F(KxForm, AGoodFileIsCheckedInSilence) {
    const TResult result = Call("check " + Write("good.dfm", Good));
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Output + result.Messages, "");
}

TEST_F(KxForm, EachBadFileIsNamedWithItsLineAndTheOthersAreStillChecked) {
    const std::string bad = Write("bad.dfm", "object F: TF\r\n  Caption == 'a'\r\nend\r\n");
    const std::string twice =
        Write("twice.dfm", "object F: TF\r\n  object A: TB\r\n  end\r\n  object A: TB\r\n  end\r\nend\r\n");
    const TResult result = Call("check " + bad + " " + Write("good.dfm", Good) + " " + twice);
    EXPECT_EQ(result.Status, 1);
    EXPECT_EQ(result.Messages,
              bad + ": Value expected on line 2\n" + twice + ": A component named A exists already on line 4\n");
}

TEST_F(KxForm, HostileFilesAreErrors) {
    const std::string good = Good;
    const std::string binary = Call("binary " + Write("good.dfm", Good)).Output;
    ASSERT_THAT(binary, StartsWith("TPF0"));
    for (const std::string& bytes :
         {std::string(), good.substr(0, good.size() - 5), binary.substr(0, binary.size() - 1), binary.substr(0, 7),
          std::string("\0\1\2\3", 4), std::string("\xFF\x0A\0", 3), std::string(5000, '\xFE'),
          std::string("object F: TF\n A = '\xFF'\nend")}) {
        const std::string file = Write("hostile.dfm", bytes);
        for (const std::string command : {"check", "exact", "text", "binary", "class"}) {
            const TResult result = Call(command + " " + file);
            EXPECT_EQ(result.Status, 1) << command << " of " << bytes.size();
            EXPECT_EQ(result.Output, "");
            EXPECT_THAT(result.Messages, StartsWith(file + ": "));
        }
    }
}

TEST_F(KxForm, EveryCutOfAFileIsAnError) {
    const std::string binary = Call("binary " + Write("good.dfm", Good)).Output;
    for (size_t size = 0; size < binary.size(); size += 3) {
        EXPECT_EQ(Call("check " + Write("cut.dfm", binary.substr(0, size))).Status, 1) << size;
    }
}

TEST_F(KxForm, FilesThatAreNotThereAreErrors) {
    const TResult result = Call("check " + Path("nobody.dfm") + " " + Path(""));
    EXPECT_EQ(result.Status, 1);
    EXPECT_THAT(result.Messages, StartsWith(Path("nobody.dfm") + ": Cannot be opened: "));
    EXPECT_THAT(result.Messages, HasSubstr(Path("") + ": Cannot be read: "));
}

TEST_F(KxForm, TextAndBinaryFormComeFromEachOther) {
    const std::string text = Write("good.dfm", Good);
    const std::string binary = Call("binary " + text).Output;
    EXPECT_EQ(Call("text " + Write("good.bin", binary)).Output, Good);
    EXPECT_EQ(Call("binary " + Write("good.bin", binary)).Output, binary);
    const std::string resource =
        std::string("\xFF\x0A\0TF\0\x30\x10", 8) + std::string({static_cast<char>(binary.size()), 0, 0, 0}) + binary;
    EXPECT_EQ(Call("text " + Write("good.res", resource)).Output, Good);
    EXPECT_EQ(
        Call("text " + Write("ugly.dfm", "object F:TF Caption='a' OnClick=FClick object B:TButton end end")).Output,
        Good);
}

TEST_F(KxForm, ExactWantsTheLayoutThatWouldBeWritten) {
    EXPECT_EQ(Call("exact " + Write("good.dfm", Good)).Status, 0);
    EXPECT_EQ(Call("exact " + Write("good.bin", Call("binary " + Path("good.dfm")).Output)).Status, 0);
    EXPECT_EQ(Call("exact " + Write("unix.dfm", "object F: TF\n  A = 1\nend\n")).Status, 0); // lines end as they did
    EXPECT_EQ(Call("exact " + Write("mixed.dfm", "object F: TF\n  A = 1\r\nend\n")).Status, 1);
    EXPECT_EQ(Call("exact " + Write("hex.dfm", "object F: TF\r\n  A = $10\r\nend\r\n")).Status, 0);
    const std::string ugly = Write("ugly.dfm", "object F: TF\r\n  A  = 10\r\nend\r\n");
    const TResult result = Call("exact " + ugly);
    EXPECT_EQ(result.Status, 1);
    EXPECT_EQ(result.Messages, ugly + ": It would be written in another way on line 2\n");
    EXPECT_EQ(Call("check " + ugly).Status, 0);
}

TEST_F(KxForm, TheClassIsDeclaredAndDefined) {
    const TResult result = Call("class " + Write("good.dfm", Good));
    EXPECT_EQ(result.Status, 0);
    EXPECT_THAT(result.Output, StartsWith("class TF : public TForm {\n"));
    EXPECT_THAT(result.Output, HasSubstr("\n\nconst TClass& TF::StaticClass() {\n"));
    EXPECT_THAT(result.Output, EndsWith("void TF::FClick(TObject* sender) {\n}\n"));
}

TEST_F(KxForm, ANameThatCppDoesNotTakeStopsTheClassAlone) {
    const std::string file = Write("word.dfm", "object F: TF\r\n  object new: TB\r\n  end\r\nend\r\n");
    EXPECT_EQ(Call("check " + file).Status, 0);
    const TResult result = Call("class " + file);
    EXPECT_EQ(result.Status, 1);
    EXPECT_EQ(result.Messages, file + ": new is a word of C++ and cannot be a name there\n");
}

TEST_F(KxForm, AHyphenIsTheStandardInput) {
    Write("good.dfm", Good);
    EXPECT_EQ(Call("text - <" + Path("good.dfm")).Output, Good);
    const TResult result = Call("check - </dev/null");
    EXPECT_EQ(result.Status, 1);
    EXPECT_THAT(result.Messages, StartsWith("standard input: "));
}

TEST_F(KxForm, AnOutputFileIsReplacedWholeOrNotAtAll) {
    const std::string good = Write("good.dfm", Good);
    Write("made", "before");
    EXPECT_EQ(Call("text -o " + Path("made") + " " + Write("bad.dfm", "object F")).Status, 1);
    EXPECT_EQ(Read("made"), "before");
    const TResult result = Call("text -o " + Path("made") + " " + good);
    EXPECT_EQ(result.Status, 0);
    EXPECT_EQ(result.Output, "");
    EXPECT_EQ(Read("made"), Good);
    EXPECT_EQ(Call("text -o " + good + " " + good).Status, 0); // over itself
    EXPECT_EQ(Read("good.dfm"), Good);
    EXPECT_FALSE(std::filesystem::exists(Path("made.new")));
}

TEST_F(KxForm, WhatCannotBeWrittenIsAnError) {
    const std::string good = Write("good.dfm", Good);
    EXPECT_EQ(Call("text -o " + Path("nofolder/made") + " " + good).Status, 1);
    std::filesystem::create_directory(Path("folder"));
    const TResult result = Call("text -o " + Path("folder") + " " + good);
    EXPECT_EQ(result.Status, 1);
    EXPECT_THAT(result.Messages, StartsWith(good + ": Cannot be written: "));
    EXPECT_FALSE(std::filesystem::exists(Path("folder.new")));
    // The standard output is a full disk.
    EXPECT_EQ(WEXITSTATUS(std::system((std::string(KX_FORM) + " text " + good + " >/dev/full 2>/dev/null").c_str())),
              1);
}

// --- Large files

/// Seconds of processor time that the programs called so far have taken.
double TakenTime() {
    rusage usage{};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

struct TLargeForm {
    const char* Name;
    std::string (*Make)(size_t size); ///< A form of about that many bytes, laid out as it would be written.
};

std::string ManyComponents(size_t size) {
    std::string text = "object F: TF\r\n";
    for (int i = 0; text.size() < size; ++i) {
        const std::string number = std::to_string(i);
        text += "  object Button" + number + ": TButton\r\n    Left = " + number + "\r\n    Caption = 'Press'\r\n" +
                "    OnClick = Button" + number + "Click\r\n  end\r\n";
    }
    return text + "end\r\n";
}

std::string ManyLines(size_t size) {
    std::string text = "object F: TF\r\n  Items.Strings = (";
    for (int i = 0; text.size() < size; ++i) {
        text += "\r\n    'line " + std::to_string(i) + " of a text that somebody keeps in a form file'";
    }
    return text + ")\r\nend\r\n";
}

std::string ManyBytes(size_t size) {
    std::string text = "object F: TF\r\n  Picture = {";
    while (text.size() < size) {
        text += "\r\n    000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F";
    }
    return text + "}\r\nend\r\n";
}

std::string ManyItems(size_t size) {
    std::string text = "object F: TF\r\n  Columns = <";
    while (text.size() < size) {
        text += "\r\n    item\r\n      Caption = 'Name'\r\n      Width = 120\r\n    end";
    }
    return text + ">\r\nend\r\n";
}

class LargeKxForm : public KxForm, public testing::WithParamInterface<TLargeForm> {
protected:
    /// Seconds that the command takes with that file. What it makes goes to the file "made".
    double TimeOf(const std::string& command, const std::string& file) const {
        const bool makes = command != "check" && command != "exact";
        const double before = TakenTime();
        const TResult result = Call(command + (makes ? " -o " + Path("made") : "") + " " + file);
        EXPECT_EQ(result.Status, 0) << command << ": " << result.Messages;
        return TakenTime() - before;
    }
};

TEST_P(LargeKxForm, TakesAsMuchLongerAsTheFileIsLarger) {
    constexpr size_t smallSize = size_t{512} * 1024;
    constexpr size_t times = 4;
    const std::string text = GetParam().Make(smallSize * times);
    const std::string small = Write("small.dfm", GetParam().Make(smallSize));
    const std::string large = Write("large.dfm", text);
    for (const std::string command : {"check", "exact", "text", "binary", "class"}) {
        const double smallTime = TimeOf(command, small);
        const double largeTime = TimeOf(command, large);
        // Twice as long as in proportion, and a moment more for what else the machine does: a step that looks at all
        // that came before would take sixteen times as long, and minutes.
        EXPECT_LT(largeTime, smallTime * times * 2 + 0.5)
            << command << " took " << smallTime << " s for the smaller one";
        if (command == "text") {
            EXPECT_TRUE(Read("made") == text);
        } else if (command == "binary") {
            const std::string binary = Write("large.bin", Read("made"));
            EXPECT_EQ(Call("text -o " + Path("made") + " " + binary).Status, 0);
            EXPECT_TRUE(Read("made") == text);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, LargeKxForm,
                         testing::Values(TLargeForm{"Components", ManyComponents}, TLargeForm{"Lines", ManyLines},
                                         TLargeForm{"Bytes", ManyBytes}, TLargeForm{"Items", ManyItems}),
                         [](const auto& each) { return std::string(each.param.Name); });

TEST_F(KxForm, WrongCallsSayHowItIsCalled) {
    const std::string good = Write("good.dfm", Good);
    for (const std::string& arguments :
         {std::string(), std::string("check"), "cheque " + good, "check -x " + good, std::string("text -o"),
          "text " + good + " -o", "check -o x " + good, "exact -o x " + good, "text -o x " + good + " " + good,
          "text -o x -o y " + good}) {
        const TResult result = Call(arguments);
        EXPECT_EQ(result.Status, 2) << arguments;
        EXPECT_EQ(result.Output, "");
        EXPECT_THAT(result.Messages, StartsWith("kx-form: "));
        EXPECT_THAT(result.Messages, HasSubstr("usage: kx-form COMMAND"));
    }
    EXPECT_EQ(Call("--help").Status, 0);
    EXPECT_THAT(Call("-h").Output, StartsWith("usage: kx-form COMMAND"));
}

} // namespace
} // namespace kx
