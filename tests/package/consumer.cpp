// The header in a C++17 program.
#include <jkc.h>

#include <cstring>
#include <memory>

int main() {
    std::unique_ptr<JkcContext, void (*)(JkcContext *)> ctx(create_jkc(), release_jkc);
    if (ctx == nullptr || ctx->sjis_src_table != _sjis2unibe932_table) {
        return 1;
    }
    char name[16];
    jkc_typeto_name(name, JKC_TYPE_UTF8);
    return std::strcmp(name, "UTF8") == 0 && jkc_nameto_type(name) == JKC_TYPE_UTF8 ? 0 : 1;
}
