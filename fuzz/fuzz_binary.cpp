// SPDX-License-Identifier: MIT
#include "FormFuzz.h"

// Binary forms, with or without a resource header: read into components, and converted to text.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace kx::sample;
    static const bool registered = (RegisterSampleClasses(), true);
    static_cast<void>(registered);
    const std::string_view form(reinterpret_cast<const char*>(data), size);
    CheckConversion(form);
    for (const TTrouble trouble : {TTrouble::Fail, TTrouble::Skip, TTrouble::Keep}) {
        CheckRead(form, trouble);
    }
    return 0;
}
