// Runs a target once with each of the files that standard input names, one a line: without libFuzzer, so with any compiler
// and C library.
#include "tests/fuzz/support.h"

int main() {
    char name[4096];
    size_t count = 0;
    for (; fgets(name, sizeof name, stdin) != nullptr; ++count) {
        name[strcspn(name, "\r\n")] = '\0';
        FILE *file = fopen(name, "rb");
        JKC_EXPECT(file != nullptr);
        jkc::fuzz::Bytes input;
        uint8_t piece[4096];
        while (const size_t length = fread(piece, 1, sizeof piece, file)) {
            input.append(piece, length);
        }
        fclose(file);
        LLVMFuzzerTestOneInput(input.data(), input.size());
    }
    printf("%u inputs\n", static_cast<unsigned>(count));
    return count > 0 ? 0 : 1;
}
