// SPDX-License-Identifier: MIT
#pragma once

#include "DesignFixture.h"

#include "kx/ui/widgets/ComCtrlsToolBar.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace kx::test {

/// A dialog that is previewed with copies of designed forms.
class TPreviewTest : public TDesignTest {
protected:
    TPreviewTest() {
        RegisterClasses<TButton, TToolBar>();
        Folder.AddFile("drawing.txt");
        Dialog->SetInitialDir(Folder.Path());
    }

    /// Previews the dialog; `look` runs in it, then it is cancelled.
    static void Show(TComponent& dialog, TAction look = {}, bool resize = false) {
        Run([&dialog, resize] { KxPreviewDialog(dialog, {}, {}, {}, {}, resize); },
            {InDialog(dialog, std::move(look)), Cancel(AsCommon(dialog))});
    }
    static void Run(const std::function<void()>& work, std::vector<TStep> steps) {
        RunDialog(
            [&] {
                work();
                return true;
            },
            std::move(steps));
    }
    static TStep InDialog(TComponent& dialog, TAction look = {}) {
        return {"the dialog", IsRunning(dialog), std::move(look)};
    }
    static TStep CannotOpen() {
        return AnswerBox(IDOK, [](const std::string& text) { EXPECT_EQ(text, "Could not open form for preview"); });
    }
    /// What a form file with a handler gives the event in a designer.
    static void SetEventOf(TObject& object, const std::string& event, const std::string& method) {
        GetPropInfo(object, event).SetEvent(object, std::make_shared<TMethodName>(method));
    }
    static std::string TempFile(const std::string& formName) {
        char path[MAX_PATH + 1] = "";
        GetTempPathA(MAX_PATH + 1, path);
        return path + formName + ".tmp";
    }

    TTempFolder Folder{"preview"};
    TKxOpenDialog* Dialog = Add<TKxOpenDialog>();
    TKxCustDlgParams& Params = Dialog->CustDlgParams();
};

} // namespace kx::test
