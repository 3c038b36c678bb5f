#pragma once

#include <map>
#include <string>

/// What a converter has said of itself: its label and its extension as it gave them. An empty label: it is none.
struct ConverterAnswer {
    std::string Label, Extension;
};

/// The answers of earlier runs, kept in the file .kirvo_converters in HomeDir, so that programs need not be started to
/// be asked again. An answer counts as long as its program's time stamps and size are the same. Without a HomeDir
/// nothing is kept.
class ConverterAnswers {
  public:
    ConverterAnswers();
    /// Writes the file when something is new. Failures are not told: the programs are asked again the next time.
    ~ConverterAnswers();
    ConverterAnswers(const ConverterAnswers&) = delete;
    ConverterAnswers& operator=(const ConverterAnswers&) = delete;

    bool Find(const std::string& program, ConverterAnswer& answer) const;
    void Remember(const std::string& program, const ConverterAnswer& answer);

  private:
    struct Known {
        std::string Stamp;
        ConverterAnswer Answer;
    };

    std::string File;
    std::map<std::string, Known> Programs;
    bool Changed = false;
};
