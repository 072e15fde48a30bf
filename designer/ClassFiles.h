// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/FormClass.h"

#include <string>
#include <string_view>
#include <vector>

namespace kx::designer {

/// A member of a form's class, as part of its code names it.
struct TClassMember {
    std::string Name;
    std::string Code; ///< Without its semicolon.
};
using TClassMembers = std::vector<TClassMember>;

/// The header and the source of a form's class, which stand beside the form file: PreviewForm.h and PreviewForm.cpp.
/// Files that are not there are made; in those that are there nothing is changed but that what the form needs and they
/// do not have is put in.
class TClassFiles {
public:
    /// Looks at the files; writes nothing. `lineBreak` is that of new files.
    /// @throws EInvalidOperation for a form whose names C++ does not take; EFOpenError
    TClassFiles(const std::string& formFile, const TFormClass& cls, std::string_view lineBreak);

    const std::string& HeaderPath() const { return FHeader.Path; }
    const std::string& SourcePath() const { return FSource.Path; }
    /// What files that are there do not have, one by one: "OrderForm.h: void OkButtonClick(TObject* sender)".
    const std::vector<std::string>& Missing() const { return FMissing; }
    bool IsComplete() const; ///< Both files have all that the form needs.

    /// Writes the files that are new or lack something.
    /// @throws EDesignError when a file has no place for what it lacks: then nothing is written. EFCreateError and
    /// others: as when a file is saved.
    void Write();

private:
    struct TFile {
        std::string Path;
        std::string Before; ///< Empty: the file is not there.
        std::string After;
        bool IsThere = false;
    };

    void Read(TFile& file) const;
    void CompleteDeclaration(TFile& file);
    void CompleteDefinition(TFile& file);
    std::string FieldsWithoutTable() const;
    TClassMembers TakeMissing(const TFile& file, std::string_view part, TClassMembers members);
    void Note(const TFile& file, const std::string& what);

    TFormClass FClass;
    TFile FHeader;
    TFile FSource;
    std::vector<std::string> FMissing;
    std::string FProblem; ///< Why not all that is missing can be put in; empty: it can.
};

/// The class from which the code beside the form file derives that class; empty when there is no such code.
std::string BaseInCode(const std::string& formFile, const std::string& className);

/// What a new header holds; lines end in "\n". @throws EInvalidOperation as FormClassDeclaration
std::string NewClassHeader(const TFormClass& cls);
std::string NewClassSource(const TFormClass& cls, const std::string& headerName);

} // namespace kx::designer
