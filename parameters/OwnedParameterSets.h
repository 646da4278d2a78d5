#pragma once

#include <memory>
#include <utility>
#include <vector>

/// The sets of an array or a list, `Base`, all of the class `T`. A subclass adds them in its constructor.
template <class T, class Base>
class OwnedParameterSets : public Base {
public:
    int count() const override { return static_cast<int>(sets.size()); }
    T& setAt(int i) const override { return *sets[static_cast<std::size_t>(i)]; }
    T& operator[](int i) const { return setAt(i); }

protected:
    using Base::Base;

    void addSet(std::unique_ptr<T> set) { sets.push_back(std::move(set)); }

private:
    std::vector<std::unique_ptr<T>> sets;
};
