// Binding of the collection proxies' entries, in their documented order.
#include "interop/collection_hosts.h"

PyHost_ph_ICol* PyHost_ph_ICol::get_instance()
{
    static PyHost_ph_ICol host;
    return &host;
}

PyHost_ph_ICol::PyHost_ph_ICol() : PyInteropHostBase(kManagedType)
{
    bind("SqLength", sq_length_) && bind("SqContains", sq_contains_) && bind("CountOf", count_of_) &&
        bind("CreateInstanceFromPyList", from_list_) && bind("CreateInstanceFromPyIterable", from_iterable_) &&
        bind("IsAssignableTo", is_assignable_to_);
}

PyHost_ph_IList* PyHost_ph_IList::get_instance()
{
    static PyHost_ph_IList host;
    return &host;
}

PyHost_ph_IList::PyHost_ph_IList() : PyListHostBase(kManagedType)
{
    bind("SqGetItem", e_.sq_getitem) && bind("SqGetItemNoCheck", e_.sq_getitem_nocheck) &&
        bind("SqSetItem", e_.sq_setitem) && bind("SqSetItemNoCheck", e_.sq_setitem_nocheck) && bind("Add", e_.add) &&
        bind("Insert", e_.insert) && bind("Remove", e_.remove) && bind("RemoveAt", e_.remove_at) &&
        bind("Pop", e_.pop) && bind("Clear", e_.clear) && bind("SqInplaceConcat", e_.sq_inplace_concat) &&
        bind("SqInplaceRepeat", e_.sq_inplace_repeat) && bind("MpSetItems", e_.mp_set_items) &&
        bind("MpRemoveItems", e_.mp_remove_items) && bind("Reverse", e_.reverse) && bind("Sort", e_.sort) &&
        bind("IndexBy", e_.index_by) && bind("SqContains", e_.sq_contains) && bind("CountOf", e_.count_of) &&
        bind("CreateInstanceFromPyList", e_.from_list) && bind("CreateInstanceFromPySequence", e_.from_sequence) &&
        bind("IsAssignableTo", e_.is_assignable_to);
}

PyHost_ph_Array* PyHost_ph_Array::get_instance()
{
    static PyHost_ph_Array host;
    return &host;
}

PyHost_ph_Array::PyHost_ph_Array() : PyListHostBase(kManagedType)
{
    bind("SqLength", e_.sq_length) && bind("SqContains", e_.sq_contains) && bind("SqGetItem", e_.sq_getitem) &&
        bind("SqGetItemNoCheck", e_.sq_getitem_nocheck) && bind("SqSetItem", e_.sq_setitem) &&
        bind("SqSetItemNoChek", e_.sq_setitem_nocheck) && bind("MpSetItems", e_.mp_set_items) &&
        bind("Reverse", e_.reverse) && bind("Sort", e_.sort) && bind("IndexBy", e_.index_by) &&
        bind("CountOf", e_.count_of) && bind("CreateInstanceFromPyList", e_.from_list) &&
        bind("CreateInstanceFromPySequence", e_.from_sequence) && bind("IsAssignableTo", e_.is_assignable_to);
}

PyHost_ph_ArrList* PyHost_ph_ArrList::get_instance()
{
    static PyHost_ph_ArrList host;
    return &host;
}

PyHost_ph_ArrList::PyHost_ph_ArrList() : PyListHostBase(kManagedType)
{
    bind("SqLength", e_.sq_length) && bind("Add", e_.add) && bind("Remove", e_.remove) && bind("Clear", e_.clear) &&
        bind("SqContains", e_.sq_contains) && bind("SqGetItem", e_.sq_getitem) &&
        bind("SqGetItemNoCheck", e_.sq_getitem_nocheck) && bind("SqSetItem", e_.sq_setitem) &&
        bind("SqSetItemNoChek", e_.sq_setitem_nocheck) && bind("Insert", e_.insert) && bind("RemoveAt", e_.remove_at) &&
        bind("Pop", e_.pop) && bind("SqInplaceConcat", e_.sq_inplace_concat) &&
        bind("SqInplaceRepeat", e_.sq_inplace_repeat) && bind("MpSetItems", e_.mp_set_items) &&
        bind("MpRemoveItems", e_.mp_remove_items) && bind("Reverse", e_.reverse) && bind("Sort", e_.sort) &&
        bind("IndexBy", e_.index_by) && bind("CountOf", e_.count_of) && bind("EnsureCapacity", e_.ensure_capacity) &&
        bind("CreateInstanceFromPyList", e_.from_list) && bind("CreateInstanceFromPySequence", e_.from_sequence) &&
        bind("IsAssignableTo", e_.is_assignable_to);
}

PyColBaseHostBase::PyColBaseHostBase(const char* managed_type) : PyInteropHostBase(managed_type)
{
    bind("IsAssignableTo", is_assignable_to_) && bind("CreateInstanceFromPyList", from_list_) &&
        bind("CreateInstanceFromPySequence", from_sequence_);
}

PyHost_ph_ColBase* PyHost_ph_ColBase::get_instance()
{
    static PyHost_ph_ColBase host;
    return &host;
}

PyHost_ph_RoColBase* PyHost_ph_RoColBase::get_instance()
{
    static PyHost_ph_RoColBase host;
    return &host;
}

PyHost_ph_Iterable* PyHost_ph_Iterable::get_instance()
{
    static PyHost_ph_Iterable host;
    return &host;
}

PyHost_ph_Iterable::PyHost_ph_Iterable() : PyInteropHostBase(kManagedType)
{
    bind("GetEnumerator", get_enumerator_) && bind("CreateInstanceFromPyIterable", from_iterable_) &&
        bind("IsAssignableTo", is_assignable_to_);
}

PyHost_ph_Iter* PyHost_ph_Iter::get_instance()
{
    static PyHost_ph_Iter host;
    return &host;
}

PyHost_ph_Iter::PyHost_ph_Iter() : PyInteropHostBase(kManagedType)
{
    bind("MoveNext", move_next_) && bind("IsAssignableTo", is_assignable_to_);
}
