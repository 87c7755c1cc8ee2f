// A benchmark program that compares its first two arguments and takes the others as its own.

#include "frame.h"

int main(int argc, char **argv)
{
    if (argc < 3)
        return -1;
    const frame::Sameness text{"the text", argv[1], argv[2]};
    frame::add("nothing", [](benchmark::State &state) {
        for (auto _ : state)
            benchmark::DoNotOptimize(state.iterations());
    });
    return frame::run(argc - 2, argv + 2, {text});
}
