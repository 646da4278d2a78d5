#include "dsp/MidSideConverter.h"

void MidSideConverter::filter(wave::Block* const* in, wave::Block** out, int count, int) noexcept
{
    if (conversion.value() == Conversion::None) {
        out[0] = in[0];
        out[1] = in[1];
        return;
    }
    const bool encodes = conversion.value() == Conversion::Encode;
    const float* first = in[0]->data();
    const float* second = in[1]->data();
    float* a = out[0]->data();
    float* b = out[1]->data();
    for (int i = 0; i < count; ++i) {
        const float half = (second[i] - first[i]) * 0.5f;
        a[i] = encodes ? half + first[i] : first[i] - second[i];
        b[i] = encodes ? half : first[i] + second[i];
    }
    const bool constant = in[0]->isConstant() && in[1]->isConstant();
    out[0]->setConstant(constant);
    out[1]->setConstant(constant);
}
