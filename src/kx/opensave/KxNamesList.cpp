// SPDX-License-Identifier: MIT
// Several file names in one text.

#include "kx/opensave/KxNamesList.h"

namespace kx {

void KxCommonGetNamesList(const std::string& names, TStrings& list) {
    list.Clear();
    if (names.starts_with('"')) {
        size_t open = 0;
        while ((open = FindChar(names, '"', open)) != std::string::npos) {
            const size_t close = FindChar(names, '"', open + 1);
            if (close == std::string::npos) {
                break;
            }
            list.Add(names.substr(open + 1, close - open - 1));
            open = close + 1;
        }
    }
    if (list.Count() == 0 && !names.empty()) {
        list.Add(names);
    }
}

std::string KxNamesListText(const TStrings& list) {
    if (list.Count() <= 1) {
        // Deliberate: one name comes with the line break that any list has, where one would expect the bare name.
        return list.Text();
    }
    std::string text;
    for (int i = 0; i < list.Count(); ++i) {
        text += (i > 0 ? " \"" : "\"") + list[i] + '"';
    }
    return text;
}

} // namespace kx
