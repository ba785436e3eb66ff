#include "workers.h"

namespace jkc::cli {

// One process does all, however many are asked for: there is no fork().
int do_work(const Work &work) {
    for (size_t i = 0; i < work.count; ++i) {
        work.done(i, work.work(i));
        work.tick();
    }
    return 0;
}

} // namespace jkc::cli
