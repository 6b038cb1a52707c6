// clang does not accept qpdf's JSON header in C++20: a class in it holds a vector of the class it is declared
// in. Nothing of ours uses that class, so a declaration stands in for it where clang compiles.
#pragma once
#define JSON_HH
#include <memory>
#include <set>
#include <string>
#include <vector>
class JSON;
class Pipeline;
