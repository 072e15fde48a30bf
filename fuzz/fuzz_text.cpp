// SPDX-License-Identifier: MIT
#include "FormFuzz.h"

// Text forms: converted to the binary form, and read into components.

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    using namespace kx;
    using namespace kx::sample;
    static const bool registered = (RegisterSampleClasses(), true);
    static_cast<void>(registered);
    const std::string_view form(reinterpret_cast<const char*>(data), size);
    try {
        TMemoryStream text(form);
        TMemoryStream binary;
        ObjectTextToBinary(text, binary);
        CheckConversion(binary.Bytes());
    } catch (const EParserError&) {
        return 0;
    }
    for (const TTrouble trouble : {TTrouble::Fail, TTrouble::Skip, TTrouble::Keep}) {
        CheckRead(form, trouble);
    }
    return 0;
}
