// SPDX-License-Identifier: MIT
// What controls leave free at their edges.

#include "kx/ui/controls/Controls.h"
#include "kx/win/Dpi.h"

namespace kx {

const TClass& TEdges::StaticClass() {
    static const TClassBuilder<TEdges> cls("TEdges", TPersistent::StaticClass());
    return cls.Class();
}

namespace {

template <class T> void PublishEdges(TClassBuilder<T>& c, int width) {
    c.Property("Left", &TEdges::Left, &TEdges::SetLeft).Default = width;
    c.Property("Top", &TEdges::Top, &TEdges::SetTop).Default = width;
    c.Property("Right", &TEdges::Right, &TEdges::SetRight).Default = width;
    c.Property("Bottom", &TEdges::Bottom, &TEdges::SetBottom).Default = width;
}

} // namespace

const TClass& TMargins::StaticClass() {
    static const TClassBuilder<TMargins> cls("TMargins", TEdges::StaticClass(), [](auto& c) { PublishEdges(c, 3); });
    return cls.Class();
}

const TClass& TPadding::StaticClass() {
    static const TClassBuilder<TPadding> cls("TPadding", TEdges::StaticClass(), [](auto& c) { PublishEdges(c, 0); });
    return cls.Class();
}

void TEdges::Change(int& field, int value) {
    value = value < 0 ? 0 : value;
    if (field != value) {
        field = value;
        Changed();
    }
}

void TEdges::ChangeScale(int to, int from) {
    for (int* edge : {&FLeft, &FTop, &FRight, &FBottom}) {
        *edge = ScaleValue(*edge, to, from);
    }
}

void TEdges::Assign(const TPersistent* source) {
    if (const auto* other = dynamic_cast<const TEdges*>(source)) {
        FLeft = other->FLeft;
        FTop = other->FTop;
        FRight = other->FRight;
        FBottom = other->FBottom;
        Changed();
    } else {
        TPersistent::Assign(source);
    }
}

TRect TEdges::Inside(const TRect& r) const {
    return {CheckedAdd(r.Left, FLeft), CheckedAdd(r.Top, FTop), CheckedSub(r.Right, FRight),
            CheckedSub(r.Bottom, FBottom)};
}

void TMargins::Changed() {
    if (Control().AlignWithMargins()) {
        Control().RequestAlign();
    }
}

void TControl::SetAlignWithMargins(bool value) {
    if (FAlignWithMargins != value) {
        FAlignWithMargins = value;
        RequestAlign();
    }
}

void TPadding::Changed() { static_cast<TWinControl&>(Control()).Realign(); }

} // namespace kx
