#include "dsp/MultiDesignFilter.h"

MultiDesignFilter::MultiDesignFilter(wave::Environment& owner, DesignFilter& sharedFilter,
                                     const FilterStyles& filterStyles)
    : GenericFilter(owner), characteristic(0, this), shared(sharedFilter), styles(filterStyles), clean(owner)
{
    attachParallel(shared);
}

void MultiDesignFilter::propertyChanged(AbstractProperty& property)
{
    GenericFilter::propertyChanged(property);
    if (&property != &characteristic)
        return;
    noteSwitch();
    if (characteristic.value() >= styles.size()) {
        detachParallel(clean);
        return;
    }
    attachParallel(shared);
    shared.setStyle(styles.at(characteristic.value()));
}
