// Included before everything in a build of mutants.
#pragma once

/// Whether the mutant `number` is the one that this run tries.
bool tallyfoldMutant(int number);

/// The same where the compiler may compute the value itself; it computes that of the source.
constexpr bool tallyfoldMutantUnlessConstant(int number)
{
    return !__builtin_is_constant_evaluated() && tallyfoldMutant(number);
}
