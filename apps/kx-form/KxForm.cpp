// SPDX-License-Identifier: MIT
// Form files on the command line: checks them, turns them into text or into the binary form, and writes the C++ class
// that belongs to one.

#include "Files.h"
#include "kx/core/FormClass.h"
#include "kx/core/FormText.h"

#include <algorithm>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace kx::tool {
namespace {

constexpr char Usage[] = "usage: kx-form COMMAND [-o OUTPUT] FILE...\n"
                         "\n"
                         "  check   tells what is wrong in each form file, with its line\n"
                         "  exact   the same, and that its text is laid out as it would be written\n"
                         "  text    the form as text\n"
                         "  binary  the form as the bytes that a program reads\n"
                         "  class   the C++ class that belongs to the form: declaration and definition\n"
                         "\n"
                         "A form file holds text, the binary form or a form resource. - is the standard input.\n"
                         "What is made goes to the standard output, or to OUTPUT, which takes a single FILE.\n"
                         "Exit status: 0, 1 when a file is wrong or cannot be read or written, 2 for a wrong call.\n";

std::string ToText(const std::string& form) {
    TMemoryStream source(form);
    TMemoryStream text;
    switch (TestStreamFormat(source)) {
    case TStreamFormat::Text: {
        TMemoryStream binary;
        ObjectTextToBinary(source, binary, nullptr, TFormNumbers::Spelled);
        binary.SetPosition(0);
        ObjectBinaryToText(binary, text, LineBreakOf(form));
        break;
    }
    case TStreamFormat::Resource: ObjectResourceToText(source, text); break;
    case TStreamFormat::Binary: ObjectBinaryToText(source, text); break;
    case TStreamFormat::Unknown: throw EInvalidImage("This is no form");
    }
    return std::string(text.Bytes());
}

std::string ToBinary(const std::string& form) {
    TMemoryStream source(ToText(form)); // the way by text checks a binary form wholly
    TMemoryStream binary;
    ObjectTextToBinary(source, binary);
    return std::string(binary.Bytes());
}

std::string ToClass(const std::string& form) {
    TMemoryStream source(form);
    const TFormClass cls = FormClassOf(source);
    return FormClassDeclaration(cls) + "\n" + FormClassDefinition(cls);
}

/// Nothing is made. @throws what is wrong in the form
std::string Check(const std::string& form) {
    ToText(form);
    TMemoryStream source(form);
    FormClassOf(source); // finds names that are there twice
    return {};
}

/// @throws EReadError for a text that is laid out in another way
std::string CheckExactly(const std::string& form) {
    Check(form);
    TMemoryStream source(form);
    const bool isText = TestStreamFormat(source) == TStreamFormat::Text;
    const std::string written = isText ? ToText(form) : ToBinary(form);
    if (written != form) {
        const auto place = std::mismatch(form.begin(), form.end(), written.begin(), written.end()).first;
        const auto line = 1 + std::count(form.begin(), place, '\n');
        throw EReadError(isText ? Format("It would be written in another way on line %s", {std::to_string(line)})
                                : std::string("It would be written in another way"));
    }
    return {};
}

struct TCommand {
    std::string_view Name;
    std::string (*Run)(const std::string& form);
};

constexpr TCommand Commands[] = {
    {"check", Check}, {"exact", CheckExactly}, {"text", ToText}, {"binary", ToBinary}, {"class", ToClass}};

struct TCall {
    const TCommand* Command = nullptr;
    std::string Output = "-";
    std::vector<std::string> Files;

    bool MakesNothing() const { return Command->Run == Check || Command->Run == CheckExactly; }
};

/// What the arguments ask for. @throws EConvertError for a wrong call
TCall CallOf(const std::vector<std::string>& arguments) {
    TCall call;
    bool hasOutput = false;
    for (size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (i == 0) {
            for (const TCommand& command : Commands) {
                call.Command = command.Name == argument ? &command : call.Command;
            }
            if (!call.Command) {
                throw EConvertError("there is no command " + argument);
            }
        } else if (argument == "-o") {
            if (++i == arguments.size() || hasOutput) {
                throw EConvertError("-o takes one name");
            }
            call.Output = arguments[i];
            hasOutput = true;
        } else if (argument.size() > 1 && argument[0] == '-') {
            throw EConvertError("there is no option " + argument);
        } else {
            call.Files.push_back(argument);
        }
    }
    if (!call.Command || call.Files.empty()) {
        throw EConvertError("a command and a form file are wanted");
    }
    if (hasOutput && (call.MakesNothing() || call.Files.size() > 1)) {
        throw EConvertError("-o takes what is made of a single file");
    }
    return call;
}

/// Tells what was wrong with a file and goes on with the next one.
bool RunOn(const TCall& call, const std::string& file) {
    try {
        const std::string made = call.Command->Run(ReadFile(file));
        if (!call.MakesNothing()) {
            WriteFile(call.Output, made);
        }
        return true;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "%s: %s\n", file == "-" ? "standard input" : file.c_str(), e.what());
        return false;
    }
}

int Run(const std::vector<std::string>& arguments) {
    if (arguments.size() == 1 && (arguments[0] == "--help" || arguments[0] == "-h")) {
        std::fputs(Usage, stdout);
        return 0;
    }
    TCall call;
    try {
        call = CallOf(arguments);
    } catch (const EConvertError& e) {
        std::fprintf(stderr, "kx-form: %s\n%s", e.what(), Usage);
        return 2;
    }
    bool isGood = true;
    for (const std::string& file : call.Files) {
        isGood = RunOn(call, file) && isGood;
    }
    return isGood ? 0 : 1;
}

} // namespace
} // namespace kx::tool

int main(int count, char** arguments) {
    kx::tool::UseBytes();
    return kx::tool::Run(std::vector<std::string>(arguments + 1, arguments + std::max(count, 1)));
}
