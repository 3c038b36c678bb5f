#pragma once

#include "platform/recordings.h"

#include <cstdint>
#include <utility>

/// A recording of the graphics layer, owned. One that the layer has lost by ending is empty again.
class KeptRecording {
  public:
    KeptRecording() = default;

    KeptRecording(KeptRecording&& other) noexcept
        : Number(std::exchange(other.Number, 0)),
          Generation(other.Generation) {}

    KeptRecording& operator=(KeptRecording&& other) noexcept {
        std::swap(Number, other.Number);
        std::swap(Generation, other.Generation);
        return *this;
    }

    ~KeptRecording() { Release(); }

    /// Keeps what draw() draws.
    template <class Function>
    void Record(Function draw) {
        Release();
        Number = gl::genobj();
        Generation = gl::RecordingGeneration();
        gl::makeobj(Number);
        draw();
        gl::closeobj();
    }

    void Release() {
        if (!IsEmpty())
            gl::delobj(Number);
        Number = 0;
    }

    bool IsEmpty() const { return !Number || Generation != gl::RecordingGeneration(); }

    void Draw() const {
        if (!IsEmpty())
            gl::callobj(Number);
    }

    /// In one packed colour.
    void Draw(std::uint32_t colour) const {
        if (!IsEmpty())
            gl::callobj(Number, colour);
    }

  private:
    int Number = 0;
    unsigned Generation = 0;
};
