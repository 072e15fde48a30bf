// SPDX-License-Identifier: MIT
#pragma once

#include "kx/core/FormValues.h"
#include "kx/ui/forms/Forms.h"

#include <memory>
#include <string>
#include <vector>

namespace kx::designer {

/// What a form file is read into: a plain form, whatever the class of the file. It shows inside a window of the
/// designer, so what the file says of its place on the screen and of its being visible is kept, and not done.
class TDesignedForm : public TForm {
    KX_CLASS()

    explicit TDesignedForm(TComponent* owner = nullptr);
    ~TDesignedForm() override;

    int DesignLeft() const { return FDesignLeft; }
    void SetDesignLeft(int value) { FDesignLeft = value; }
    int DesignTop() const { return FDesignTop; }
    void SetDesignTop(int value) { FDesignTop = value; }
    bool DesignVisible() const { return FDesignVisible; }
    void SetDesignVisible(bool value) { FDesignVisible = value; }

    /// The client area keeps its size: it is what the controls stand in.
    void SetDesignBorderStyle(TFormBorderStyle value);

    const TPoint& GridSize() const { return FGridSize; } ///< Pixels from one dot to the next; 0: none are shown.
    void SetGridSize(const TPoint& value);

    /// The form has another size, whoever gave it that.
    void SetOnSized(TEvent<void()> value) { FOnSized = std::move(value); }

    void Loaded() override;

protected:
    void Paint() override;
    void Resize() override;
    bool DialogKey(uint16_t, TShiftState) override { return false; } ///< Keys are the designer's.

private:
    int FDesignLeft = 0;
    int FDesignTop = 0;
    bool FDesignVisible = false;
    TPoint FGridSize{8, 8};
    TEvent<void()> FOnSized;
};

/// Stands for a component whose class the designer does not know: a box with the name of the class.
class TUnknownBox : public TCustomControl {
    KX_CLASS()

    explicit TUnknownBox(TComponent* owner = nullptr);
    ~TUnknownBox() override;

protected:
    void Paint() override;
};

using TDesignedFormPtr = std::unique_ptr<TDesignedForm, TFreeDeleter>;

/// The form files on which one stands that inherits, the first ancestor first.
using TAncestorFiles = std::vector<std::string>;

/// Reads a form of whichever format and loses nothing of it. `parent`, if not null, is the window that will show it. A
/// form that inherits has what its ancestors bring; what no ancestor brings becomes a box.
/// @throws EParserError, EReadError and others, with the line or the offset.
TDesignedFormPtr ReadForm(const std::string& bytes, HWND parent, const TAncestorFiles& ancestors = {});
/// The form as it is now, in the binary form; of one that inherits, what differs from `ancestor`, if that is not null.
/// What goes into a file has plain numbers.
std::string WriteForm(TDesignedForm& form, TDesignedForm* ancestor = nullptr,
                      TFormNumbers numbers = TFormNumbers::Spelled);

} // namespace kx::designer
