#pragma once

#include "foundation/Property.h"

namespace gui {

/// Reads and writes through two operations of `Owner`.
template <class T, class Owner, T (Owner::*read)() const, void (Owner::*write)(T)>
class MemberAccess {
public:
    explicit MemberAccess(Owner& accessOwner) : owner(accessOwner) {}
    T value() const { return (owner.*read)(); }
    void assign(T newValue) { (owner.*write)(newValue); }

private:
    Owner& owner;
};

/// A property without a value of its own, as the left edge of a rectangle: it reads and writes through two
/// operations of `Owner`, which tells of the change itself.
template <class T, class Owner, T (Owner::*read)() const, void (Owner::*write)(T)>
class MemberProperty : private MemberAccess<T, Owner, read, write>,
                       public DelegatingProperty<T, MemberAccess<T, Owner, read, write>> {
    using Access = MemberAccess<T, Owner, read, write>;
    using Delegating = DelegatingProperty<T, Access>;

public:
    explicit MemberProperty(Owner& owner) : Access(owner), Delegating(static_cast<Access&>(*this)) {}
    using Delegating::assign;
    using Delegating::value;
};

}  // namespace gui
