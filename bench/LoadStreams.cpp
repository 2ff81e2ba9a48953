// What bench/load measures: a program that has the standard streams, and does nothing.
#include <iostream>

int main() { return std::cout.good() ? 0 : 1; }
