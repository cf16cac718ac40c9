// Writes a generated log: the shapes that the benchmarks use, for trying them by hand.

#include "bench/benchlogs.h"

#include <array>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <optional>
#include <string_view>

namespace {

using bench::Shape;

std::optional<Shape> shapeOf(std::string_view name) {
    constexpr std::array SHAPES{Shape::Uniform,   Shape::Skewed,  Shape::Noisy,
                                Shape::Periodic,  Shape::Hub,     Shape::Alternating,
                                Shape::Fibonacci, Shape::Sessions};
    for (const Shape shape : SHAPES) {
        if (name == bench::nameOf(shape))
            return shape;
    }
    return std::nullopt;
}

int usage() {
    std::cerr << "usage: quillon-log SHAPE EVENTS MEGABYTES FILE\n"
                 "Writes recordings of EVENTS presses or menu choices each, until FILE has\n"
                 "MEGABYTES million bytes. SHAPE: uniform, skewed, noisy, periodic, hub,\n"
                 "alternating, Fibonacci or sessions.\n";
    return 2;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 5)
        return usage();
    const std::optional<Shape> shape = shapeOf(argv[1]);
    const int size = std::atoi(argv[2]);
    const int megabytes = std::atoi(argv[3]);
    if (!shape || size < 1 || megabytes < 1)
        return usage();
    try {
        bench::writeLog({*shape, size, megabytes}, argv[4]);
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
