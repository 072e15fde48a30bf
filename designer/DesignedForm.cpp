// SPDX-License-Identifier: MIT
// Forms in design state.

#include "designer/DesignedForm.h"

#include "kx/core/FormText.h"
#include "kx/win/Windows.h"

#include <algorithm>

namespace kx::designer {

const TClass& TDesignedForm::StaticClass() {
    static const TClassBuilder<TDesignedForm> cls("TDesignedForm", TForm::StaticClass(), [](auto& c) {
        using T = TDesignedForm;
        const auto always = [](const TObject&) { return true; };
        c.Property("Left", &T::DesignLeft, &T::SetDesignLeft).Stored = always;
        c.Property("Top", &T::DesignTop, &T::SetDesignTop).Stored = always;
        c.Property("BorderStyle", &T::BorderStyle, &T::SetDesignBorderStyle).Default = bsSizeable;
        c.Property("Visible", &T::DesignVisible, &T::SetDesignVisible).Default = false;
    });
    return cls.Class();
}

TDesignedForm::TDesignedForm(TComponent* owner) : TForm(owner) { SetDesigning(true); }

TDesignedForm::~TDesignedForm() = default;

void TDesignedForm::SetDesignBorderStyle(TFormBorderStyle value) {
    const int width = ClientWidth();
    const int height = ClientHeight();
    SetBorderStyle(value);
    if (!IsLoading()) {
        SetClientSize(width, height);
        Invalidate();
    }
}

void TDesignedForm::SetGridSize(const TPoint& value) {
    if (FGridSize != value) {
        FGridSize = value;
        Invalidate();
    }
}

/// Some controls change when they get their windows, as tool bars that size themselves. That is no change of the form,
/// so it is done before the form counts as read.
void TDesignedForm::Loaded() {
    TForm::Loaded();
    if (ParentWindow()) {
        HandleNeeded();
    }
}

void TDesignedForm::Resize() {
    if (Outlives(*this, [this] { TForm::Resize(); })) {
        FOnSized();
    }
}

void TDesignedForm::Paint() {
    if (FGridSize.X <= 0 || FGridSize.Y <= 0) {
        return;
    }
    // A pattern as large as the grid, with one dot in its corner. Rows are of whole words, whose first byte has the
    // pixels on the left; a zero takes the colour of texts.
    constexpr int wordBits = 16;
    constexpr WORD noDot = 0xFFFF;
    constexpr WORD dotOnTheLeft = 0xFF7F;
    const int wordsInRow = (FGridSize.X + wordBits - 1) / wordBits;
    std::vector<WORD> rows(static_cast<size_t>(wordsInRow * FGridSize.Y), noDot);
    rows[0] = dotOnTheLeft;
    const unique_hbitmap bitmap(CreateBitmap(FGridSize.X, FGridSize.Y, 1, 1, rows.data()));
    const HBRUSH brush = CreatePatternBrush(bitmap.get());
    const HDC dc = Canvas().Handle();
    SetTextColor(dc, static_cast<COLORREF>(ColorToRGB(clBtnShadow)));
    SetBkColor(dc, static_cast<COLORREF>(ColorToRGB(Color())));
    SetBrushOrgEx(dc, 0, 0, nullptr);
    const RECT all{0, 0, ClientWidth(), ClientHeight()};
    ::FillRect(dc, &all, brush);
    DeleteObject(brush);
}

const TClass& TUnknownBox::StaticClass() {
    static const TClassBuilder<TUnknownBox> cls("TUnknownBox", TCustomControl::StaticClass(),
                                                [](auto& c) { c.Creatable(); });
    return cls.Class();
}

TUnknownBox::TUnknownBox(TComponent* owner) : TCustomControl(owner) {
    constexpr int width = 120;
    constexpr int height = 24;
    SetControlStyle({csOpaque});
    SetBounds(0, 0, width, height);
}

TUnknownBox::~TUnknownBox() = default;

void TUnknownBox::Paint() {
    TCanvas& canvas = Canvas();
    canvas.Brush().SetColor(clInfoBk);
    canvas.FillRect(ClientRect());
    canvas.Brush().SetColor(clBtnShadow);
    canvas.FrameRect(ClientRect());
    canvas.Brush().SetColor(clInfoBk);
    canvas.Font().SetColor(clInfoText);
    const TRect inner{2, 1, ClientWidth() - 2, ClientHeight() - 1};
    const auto show = [&](const std::string& text, TRect line) {
        canvas.DrawText(text, line, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_END_ELLIPSIS | DT_NOPREFIX);
    };
    const std::string all = Name() + ": " + FormClassName();
    const int height = canvas.TextHeight(all);
    if (canvas.TextWidth(all) <= kx::Width(inner) || kx::Height(inner) < 2 * height) {
        show(all, inner);
        return;
    }
    const int middle = (inner.Top + inner.Bottom) / 2;
    show(Name(), {inner.Left, middle - height, inner.Right, middle});
    show(FormClassName(), {inner.Left, middle, inner.Right, middle + height});
}

TDesignedFormPtr ReadForm(const std::string& bytes, HWND parent, const TAncestorFiles& ancestors) {
    TDesignedFormPtr form(new TDesignedForm);
    if (parent) {
        form->SetParentWindow(parent);
    }
    const auto read = [&form](const std::string& file) {
        TStaticMemoryStream stream(file.data(), file.size());
        ReadComponent(stream, form.get(), [](TReader& reader) {
            reader.SetKeepsUnknown(true);
            reader.SetOnPlaceholder(
                [](TReader&, const std::string&, const TClass*& cls) { cls = &TUnknownBox::StaticClass(); });
        });
    };
    std::ranges::for_each(ancestors, read);
    read(bytes);
    form->AfterConstruction();
    return form;
}

std::string WriteForm(TDesignedForm& form, TDesignedForm* ancestor, TFormNumbers numbers) {
    TMemoryStream stream;
    TWriter writer(stream);
    writer.SetNumbers(numbers);
    writer.WriteDescendent(form, ancestor);
    return std::string(stream.Bytes());
}

} // namespace kx::designer
