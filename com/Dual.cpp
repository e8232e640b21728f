#include "com/Dual.h"

#include <algorithm>
#include <deque>
#include <vector>

#include "com/Failing.h"
#include "com/Values.h"

namespace kv::com::detail {
namespace {

/// The description of the member that is called, released with it.
class Member {
  public:
    Member(ITypeInfo* Type, DISPID Id, WORD Flags) : Type_(Type) {
        TYPEATTR* Attributes = nullptr;
        if (FAILED(Type->GetTypeAttr(&Attributes))) return;
        const UINT Functions = Attributes->cFuncs;
        Type->ReleaseTypeAttr(Attributes);
        for (UINT I = 0; I < Functions && !Described_; ++I) {
            if (FAILED(Type->GetFuncDesc(I, &Described_))) {
                Described_ = nullptr;
                continue;
            }
            if (Described_->memid == Id && (Described_->invkind & Flags)) return;
            Type->ReleaseFuncDesc(Described_);
            Described_ = nullptr;
        }
    }
    Member(const Member&) = delete;
    Member& operator=(const Member&) = delete;
    ~Member() {
        if (Described_) Type_->ReleaseFuncDesc(Described_);
    }

    bool Known() const noexcept { return Described_ != nullptr; }

    /// Type of a parameter, null for one that is not there.
    const TYPEDESC* Parameter(long Place) const noexcept {
        return Described_ && Place >= 0 && Place < Described_->cParams
                   ? &Described_->lprgelemdescParam[Place].tdesc
                   : nullptr;
    }

    /// How many arguments a call that leaves out the last ones must be given nevertheless: all, where each
    /// that it leaves out is optional; else as many as it has.
    UINT Wanted(UINT Given) const noexcept {
        if (!Described_) return Given;
        UINT All = 0;
        for (; All < static_cast<UINT>(Described_->cParams); ++All) {
            const USHORT Flags = Described_->lprgelemdescParam[All].paramdesc.wParamFlags;
            if (Flags & PARAMFLAG_FRETVAL) break;
            if (All >= Given && !(Flags & PARAMFLAG_FOPT)) return Given;
        }
        return std::max(All, Given);
    }

  private:
    ITypeInfo* Type_;
    FUNCDESC* Described_ = nullptr;
};

/// The type to which an in/out parameter points; empty for a parameter by value and for a variant, which need
/// no help.
VARTYPE PointedAt(const TYPEDESC& Type) noexcept {
    if (Type.vt != VT_PTR || Type.lptdesc->vt == VT_VARIANT) return VT_EMPTY;
    if (Type.lptdesc->vt == VT_USERDEFINED) return VT_EMPTY;  // an object by value
    return Type.lptdesc->vt == VT_PTR ? static_cast<VARTYPE>(VT_DISPATCH) : Type.lptdesc->vt;
}

/// What stands in for an argument during the call.
struct Substitute {
    Variant Value;
    VARIANT* WriteBack = nullptr;  // the caller's variable
};

Variant Converted(const VARIANT& From, VARTYPE Type) {
    switch (Type) {
        case VT_BSTR:
            return Variant(std::wstring_view(TextOf(From)));
        case VT_BOOL:
            return Variant(FlagOf(From));
        case VT_DISPATCH:
            return Variant(ObjectOf(From).Get());
        default: {
            Variant Made(NumberOf(From));
            if (FAILED(VariantChangeType(&Made.Get(), &Made.Get(), 0, Type)))
                throw Refusal(DISP_E_OVERFLOW, L"Numero fuori dai limiti");
            return Made;
        }
    }
}

void* AddressOf(VARIANT& Value) noexcept { return &Value.byref; }

}  // namespace

HRESULT TypeInformation(REFIID Interface, UINT Which, ITypeInfo** Into) noexcept {
    if (!Into) return E_POINTER;
    *Into = nullptr;
    if (Which != 0) return DISP_E_BADINDEX;
    return Guard(Interface, L"vdbSvr", [&] { *Into = module::TypeOf(Interface).Detach(); });
}

HRESULT IdsOfNames(REFIID Interface, LPOLESTR* Names, UINT Count, DISPID* Ids) noexcept {
    if (!Names || !Ids || Count == 0) return E_INVALIDARG;
    Ref<ITypeInfo> Type;
    const HRESULT Result = Guard(Interface, L"vdbSvr", [&] { Type = module::TypeOf(Interface); });
    return FAILED(Result) ? Result : DispGetIDsOfNames(Type.Get(), Names, Count, Ids);
}

HRESULT Call(void* Object, REFIID Interface, DISPID Id, WORD Flags, DISPPARAMS* Arguments, VARIANT* Result,
             EXCEPINFO* Information, UINT* Wrong) noexcept {
    if (!Arguments || (Arguments->cArgs > 0 && !Arguments->rgvarg) ||
        (Arguments->cNamedArgs > 0 && !Arguments->rgdispidNamedArgs) ||
        Arguments->cNamedArgs > Arguments->cArgs)
        return E_INVALIDARG;
    HRESULT Called = S_OK;
    UINT At = 0;
    UINT LeftOut = 0;
    const HRESULT Prepared = Guard(Interface, L"vdbSvr", [&] {
        const Ref<ITypeInfo> Type = module::TypeOf(Interface);
        // Some scripts put an object as they put a value.
        const WORD Kind = Flags == DISPATCH_PROPERTYPUT && !Member(Type.Get(), Id, Flags).Known()
                              ? static_cast<WORD>(DISPATCH_PROPERTYPUTREF)
                              : Flags;
        const Member Target(Type.Get(), Id, Kind);
        const UINT Wanted = Arguments->cNamedArgs == 0 ? Target.Wanted(Arguments->cArgs) : Arguments->cArgs;
        // The arguments stand in reverse order, those left out thus before the others.
        LeftOut = Wanted - Arguments->cArgs;
        std::vector<VARIANT> Given(LeftOut, Variant::Absent().Detach());
        Given.insert(Given.end(), Arguments->rgvarg, Arguments->rgvarg + Arguments->cArgs);
        std::deque<Substitute> Substitutes;
        for (At = 0; At < Wanted; ++At) {
            // The value of a property is named, and is its last parameter.
            long Place = static_cast<long>(Wanted - 1 - At);
            if (At < Arguments->cNamedArgs)
                Place = Arguments->rgdispidNamedArgs[At] == DISPID_PROPERTYPUT
                            ? static_cast<long>(Wanted) - 1
                            : static_cast<long>(Arguments->rgdispidNamedArgs[At]);
            const TYPEDESC* const Parameter = Target.Parameter(Place);
            VARIANT& Argument = Given[At];
            const bool ByVariant = Argument.vt == (VT_VARIANT | VT_BYREF);
            if (ByVariant && !Argument.pvarVal) throw Refusal(E_POINTER, L"Manca un argomento");
            const VARTYPE Pointed = Parameter ? PointedAt(*Parameter) : static_cast<VARTYPE>(VT_EMPTY);
            if (Pointed != VT_EMPTY) {
                if (!ByVariant && (Argument.vt & VT_BYREF)) continue;
                const Variant Nothing;
                const VARIANT& From = ByVariant            ? *Argument.pvarVal
                                      : IsAbsent(Argument) ? Nothing.Get()
                                                           : Argument;
                Substitute& Stand = Substitutes.emplace_back();
                Variant Made = Converted(From, Pointed);
                std::swap(Stand.Value.Get(), Made.Get());
                Stand.WriteBack = ByVariant ? Argument.pvarVal : nullptr;
                Argument.vt = static_cast<VARTYPE>(Pointed | VT_BYREF);
                Argument.byref = AddressOf(Stand.Value.Get());
                continue;
            }
            if (ByVariant && !(Parameter && Parameter->vt == VT_PTR)) {
                Substitute& Stand = Substitutes.emplace_back();
                Check(VariantCopyInd(&Stand.Value.Get(), &Argument), L"");
                Argument = Stand.Value.Get();
            }
            // No object is an object too.
            if (Parameter && Parameter->vt == VT_DISPATCH &&
                (Argument.vt == VT_NULL || Argument.vt == VT_EMPTY)) {
                Argument.vt = VT_DISPATCH;
                Argument.pdispVal = nullptr;
            }
        }
        DISPPARAMS Passed = *Arguments;
        Passed.cArgs = Wanted;
        Passed.rgvarg = Given.data();
        Called = DispInvoke(Object, Type.Get(), Id, Kind, &Passed, Result, Information, &At);
        if (FAILED(Called)) return;
        for (Substitute& Stand : Substitutes)
            if (Stand.WriteBack) {
                VariantClear(Stand.WriteBack);
                *Stand.WriteBack = Stand.Value.Detach();
            }
    });
    const HRESULT Answer = FAILED(Prepared) ? Prepared : Called;
    // Its place among those that the caller has given.
    const UINT Place = At - LeftOut;
    if (Wrong && Place < Arguments->cArgs &&
        (Answer == DISP_E_TYPEMISMATCH || Answer == DISP_E_PARAMNOTFOUND))
        *Wrong = Place;
    return Answer;
}

}  // namespace kv::com::detail
