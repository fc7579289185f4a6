// Lets a smart pointer own what a C library hands out.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef BASE_RELEASED_BY_H
#define BASE_RELEASED_BY_H

namespace quelm {

/// Gives an object back by the function of its library: std::unique_ptr<cairo_t, ReleasedBy<cairo_destroy>>.
template <auto release>
struct ReleasedBy {
    template <class Object>
    void operator()(Object* object) const
    {
        release(object);
    }
};

} // namespace quelm

#endif
