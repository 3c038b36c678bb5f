#pragma once

#include <random>
#include <string>

/// Model files as their writer makes them, with changes that keep the form: items that are missing, there twice, in
/// another place or nested in each other, and numbers, counts and texts at the ends of what they can be. What is no
/// file of the current version, or was damaged otherwise, is changed only where its items can be told apart.
class ModelMutator {
  public:
    explicit ModelMutator(unsigned seed) : Random(seed) {}

    /// The file with one to four changes; the result has at most `mostBytes`.
    std::string Mutate(const std::string& file, std::size_t mostBytes);

  private:
    std::mt19937 Random;
};
