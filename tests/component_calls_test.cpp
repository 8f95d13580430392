#include "component_host.h"
#include "temp_folder.h"
#include "zlmim/component/classes.h"
#include "zlmim/component/platform.h"
#include "zlmim/component/status.h"
#include "zlmim/model/errors.h"
#include "zlmim/model/text.h"

#include <cmath>
#include <cstdint>
#include <cstring>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace ZLMIM::Host
{
namespace
{

using namespace ZLMIM::Testing;
using Component::kNoInterface;

constexpr WORD kGet = DISPATCH_PROPERTYGET;
constexpr WORD kPut = DISPATCH_PROPERTYPUT;
constexpr WORD kMethod = DISPATCH_METHOD;

/// A call by name with all parameters of `IDispatch::Invoke`. Results are initially garbage.
struct RawCall
{
    explicit RawCall(std::vector<VARIANT> given, std::vector<DISPID> named = {})
        : arguments(std::move(given)), names(std::move(named))
    {
        std::memset(static_cast<void*>(&result), 0xAA, sizeof(result));
        std::memset(static_cast<void*>(&exception), 0xAA, sizeof(exception));
    }

    HRESULT Invoke(IDispatch* object, DISPID id, WORD flags, REFIID iid = kNoInterface)
    {
        DISPPARAMS parameters{arguments.data(), names.data(), static_cast<UINT>(arguments.size()),
                              static_cast<UINT>(names.size())};
        return object->Invoke(id, iid, 0, flags, &parameters, &result, &exception, &badArgument);
    }

    std::vector<VARIANT> arguments;
    std::vector<DISPID> names;
    VARIANT result;
    EXCEPINFO exception;
    UINT badArgument = 99;
};

/// Source and description of the thread's error, which is then cleared.
[[nodiscard]] std::u16string TakenError()
{
    Pointer<IErrorInfo> error;
    if (TakeError(ClassObjects(), error) != S_OK)
        return u"none";
    Text source;
    Text description;
    EXPECT_EQ(error->GetSource(source.Out()), S_OK);
    EXPECT_EQ(error->GetDescription(description.Out()), S_OK);
    return source.Copy() + u": " + description.Copy();
}

TEST(ComponentCalls, RejectBadCallsByName)
{
    const auto geometry = New<_Geometry>();
    ASSERT_EQ(geometry->put_MaxIndex(3), S_OK);
    const auto entry = New<_MeshEntry>();
    const Variant n(LONG{1});
    const Variant t(std::u16string_view(u"text"));
    const Variant object(geometry.Get());
    const struct
    {
        const char* what;
        std::u16string_view member;
        WORD flags;
        std::vector<VARIANT> arguments; // the last one first
        std::vector<DISPID> names;
        HRESULT status;
        UINT badArgument = 99;
    } cases[] = {
        {"an argument more", u"GetIndex", kMethod, {n, n}, {}, DISP_E_BADPARAMCOUNT},
        {"more than any member has", u"Load", kMethod, {t, t, t, t, t, t, t}, {}, DISP_E_BADPARAMCOUNT},
        {"an argument for a number", u"Version", kGet, {n}, {}, DISP_E_BADPARAMCOUNT},
        {"too few", u"SetIndex", kMethod, {n}, {}, DISP_E_BADPARAMCOUNT},
        {"no value", u"Version", kPut, {}, {}, DISP_E_BADPARAMCOUNT},
        {"two values", u"Version", kPut, {n, n}, {}, DISP_E_BADPARAMCOUNT},
        {"the first is wrong", u"SetIndex", kMethod, {n, t}, {}, DISP_E_TYPEMISMATCH, 1},
        {"the last is wrong", u"SetIndex", kMethod, {t, n}, {}, DISP_E_TYPEMISMATCH, 0},
        {"no record", u"SetVertex", kMethod, {n, n}, {}, DISP_E_TYPEMISMATCH, 0},
        {"an object for a number", u"Version", kPut, {object}, {}, DISP_E_TYPEMISMATCH, 0},
        {"a number for an object", u"BoneObject", kPut, {n}, {}, DISP_E_TYPEMISMATCH, 0},
        {"a name for a property that has none", u"Version", kPut, {n}, {0}, S_OK},
        {"an unknown name", u"SetIndex", kMethod, {n, n}, {2}, DISP_E_PARAMNOTFOUND, 0},
        {"a negative name", u"SetIndex", kMethod, {n, n}, {1, -3}, DISP_E_PARAMNOTFOUND, 1},
        {"a name twice", u"SetIndex", kMethod, {n, n}, {1, 1}, DISP_E_PARAMNOTFOUND, 1},
        {"by name and by position", u"SetIndex", kMethod, {n, n}, {0}, DISP_E_BADPARAMCOUNT},
        {"one missing beside a name", u"SetIndex", kMethod, {n}, {1}, DISP_E_PARAMNOTOPTIONAL},
        {"more names than arguments", u"SetIndex", kMethod, {n}, {0, 1}, E_INVALIDARG},
        {"the wrong one has a name", u"SetIndex", kMethod, {t, n}, {1, 0}, DISP_E_TYPEMISMATCH, 0},
        {"a method written", u"GetIndex", kPut, {n}, {}, DISP_E_MEMBERNOTFOUND},
        {"flags of nothing", u"Version", 0, {}, {}, DISP_E_MEMBERNOTFOUND},
        {"arguments for no list", u"BoneObject", kGet, {n}, {}, DISP_E_BADPARAMCOUNT},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(c.what);
        IDispatch* const called = c.member == u"Load" ? static_cast<IDispatch*>(entry.Get()) : geometry.Get();
        RawCall call(c.arguments, c.names);
        EXPECT_EQ(call.Invoke(called, IdOf(called, c.member), c.flags), c.status);
        EXPECT_EQ(call.badArgument, c.badArgument);
        if (FAILED(c.status))
        {
            EXPECT_EQ(call.result.vt, VT_EMPTY);
            EXPECT_EQ(call.exception.scode, 0);
            EXPECT_EQ(call.exception.bstrDescription, nullptr);
            EXPECT_NE(TakenError(), u"none");
        }
    }
    RawCall call({});
    EXPECT_EQ(call.Invoke(geometry.Get(), 9999, kGet), DISP_E_MEMBERNOTFOUND);
    EXPECT_EQ(call.Invoke(geometry.Get(), 7, kGet, Component::kIUnknown), DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(geometry->Invoke(7, kNoInterface, 0, kGet, nullptr, nullptr, nullptr, nullptr), E_INVALIDARG);
    DISPPARAMS nothing{nullptr, nullptr, 1, 0};
    EXPECT_EQ(geometry->Invoke(7, kNoInterface, 0, kPut, &nothing, nullptr, nullptr, nullptr), E_INVALIDARG);
    EXPECT_EQ(geometry->GetTypeInfoCount(nullptr), E_POINTER);
    EXPECT_EQ(geometry->GetTypeInfo(0, 0, nullptr), E_POINTER);
    ITypeInfo* info = nullptr;
    EXPECT_EQ(geometry->GetTypeInfo(1, 0, &info), DISP_E_BADINDEX);
    LPOLESTR noName[] = {nullptr};
    const Text name(u"Version");
    LPOLESTR names[] = {name.Get(), name.Get()};
    DISPID ids[] = {1, 1};
    EXPECT_EQ(geometry->GetIDsOfNames(kNoInterface, noName, 1, 0, ids), E_INVALIDARG);
    EXPECT_EQ(geometry->GetIDsOfNames(kNoInterface, names, 1, 0, nullptr), E_POINTER);
    EXPECT_EQ(geometry->GetIDsOfNames(Component::kIUnknown, names, 1, 0, ids), DISP_E_UNKNOWNINTERFACE);
    EXPECT_EQ(geometry->GetIDsOfNames(kNoInterface, names, 2, 0, ids), DISP_E_UNKNOWNNAME);
    EXPECT_NE(ids[0], DISPID_UNKNOWN);
    EXPECT_EQ(ids[1], DISPID_UNKNOWN);
}

TEST(ComponentCalls, AcceptArgumentsByPositionAndByName)
{
    const auto geometry = New<_Geometry>();
    ASSERT_EQ(geometry->put_MaxIndex(3), S_OK);
    const Text member(u"setindex");
    const Text first(u"INDEX");
    const Text second(u"I");
    LPOLESTR names[] = {member.Get(), second.Get(), first.Get()};
    DISPID ids[3] = {};
    ASSERT_EQ(geometry->GetIDsOfNames(kNoInterface, names, 3, 0, ids), S_OK);
    EXPECT_EQ(ids[1], 1);
    EXPECT_EQ(ids[2], 0);
    RawCall both({Variant(LONG{70}), Variant(LONG{0})}, {ids[1], ids[2]});
    EXPECT_EQ(both.Invoke(geometry.Get(), ids[0], kMethod), S_OK);
    RawCall one({Variant(LONG{71}), Variant(LONG{1})}, {ids[1]});
    EXPECT_EQ(one.Invoke(geometry.Get(), ids[0], kMethod), S_OK);
    RawCall positions({Variant(LONG{72}), Variant(LONG{2})});
    EXPECT_EQ(positions.Invoke(geometry.Get(), ids[0], kMethod), S_OK);
    for (LONG i = 0; i < 3; ++i)
    {
        LONG index = 0;
        EXPECT_EQ(geometry->GetIndex(&i, &index), S_OK);
        EXPECT_EQ(index, 70 + i);
    }
    RawCall put({Variant(LONG{5})}, {DISPID_PROPERTYPUT});
    EXPECT_EQ(put.Invoke(geometry.Get(), IdOf(geometry.Get(), u"Version"), kPut), S_OK);
    EXPECT_EQ(Read<LONG>(geometry, &_Geometry::get_Version), 5);

    const auto model = New<_ZLMModel>();
    const auto list = ReadObject(model, &_ZLMModel::get_BogieNames);
    const Variant text(std::u16string_view(u"text"));
    RawCall add({text}, {0});
    EXPECT_EQ(add.Invoke(list.Get(), IdOf(list.Get(), u"Add"), kMethod), S_OK);
    EXPECT_EQ(Read<LONG>(list, &_Collection::Count), 1);
    RawCall keyed({text, text}, {1, 0});
    EXPECT_EQ(keyed.Invoke(list.Get(), IdOf(list.Get(), u"Add"), kMethod), DISP_E_EXCEPTION);
    EXPECT_EQ(keyed.exception.scode, ScriptError(5));
    SysFreeString(keyed.exception.bstrSource);
    SysFreeString(keyed.exception.bstrDescription);
}

template <class T>
[[nodiscard]] VARIANT Of(VARTYPE type, T value)
{
    VARIANT variant{};
    variant.vt = type;
    std::memcpy(&variant.lVal, &value, sizeof(value));
    return variant;
}

TEST(ComponentCalls, ConvertNumbersAndTexts)
{
    constexpr float kMax = std::numeric_limits<float>::max();
    const auto text = [](std::u16string_view characters) { return Of(VT_BSTR, Text::Allocate(characters)); };
    const struct
    {
        std::u16string_view property; // of a material: an integer, a float or a text
        VARIANT given;
        HRESULT status;
        std::u16string_view text; // of the stored value
    } cases[] = {
        {u"Version", Of(VT_I1, std::int8_t{-128}), S_OK, u"-128"},
        {u"Version", Of(VT_UI1, std::uint8_t{255}), S_OK, u"255"},
        {u"Version", Of(VT_I2, std::int16_t{-32768}), S_OK, u"-32768"},
        {u"Version", Of(VT_UI2, std::uint16_t{65535}), S_OK, u"65535"},
        {u"Version", Of(VT_INT, std::int32_t{-7}), S_OK, u"-7"},
        {u"Version", Of(VT_UI4, std::uint32_t{2147483647}), S_OK, u"2147483647"},
        {u"Version", Of(VT_I8, std::int64_t{-2147483648}), S_OK, u"-2147483648"},
        {u"Version", Of(VT_I8, std::int64_t{-2147483649}), DISP_E_OVERFLOW, u""},
        {u"Version", Of(VT_UI8, std::uint64_t{2147483648}), DISP_E_OVERFLOW, u""},
        {u"Version", Of(VT_R8, 2147483647.25), S_OK, u"2147483647"},
        {u"Version", Of(VT_R8, 2147483647.5), DISP_E_OVERFLOW, u""},
        {u"Version", Of(VT_R8, 0.5), S_OK, u"0"},
        {u"Version", Of(VT_R8, 1.5), S_OK, u"2"},
        {u"Version", Of(VT_R8, -2.5), S_OK, u"-2"},
        {u"Version", Of(VT_R4, 2.75F), S_OK, u"3"},
        {u"Version", Of(VT_BOOL, VARIANT_TRUE), S_OK, u"-1"},
        {u"Version", Of(VT_EMPTY, 0), S_OK, u"0"},
        {u"Version", Of(VT_NULL, 0), DISP_E_TYPEMISMATCH, u""},
        {u"Version", text(u" +12 "), S_OK, u"12"},
        {u"Version", text(u"-1.25e2"), S_OK, u"-125"},
        {u"Version", text(u"2147483648"), DISP_E_OVERFLOW, u""},
        {u"Version", text(u"twelve"), DISP_E_TYPEMISMATCH, u""},
        {u"Version", text(u"12x"), DISP_E_TYPEMISMATCH, u""},
        {u"Version", text(u"nan"), DISP_E_TYPEMISMATCH, u""},
        {u"Version", text(u""), DISP_E_TYPEMISMATCH, u""},
        {u"Opacity", Of(VT_R8, 0.1), S_OK, u"0.1"},
        {u"Opacity", Of(VT_R8, double{kMax}), S_OK, u"3.402823E+38"},
        {u"Opacity", Of(VT_R8, double{kMax} * 2), DISP_E_OVERFLOW, u""},
        {u"Opacity", Of(VT_I4, LONG{-3}), S_OK, u"-3"},
        {u"Opacity", text(u"-0.5"), S_OK, u"-0.5"},
        {u"Name", Of(VT_I4, LONG{-2147483647 - 1}), S_OK, u"-2147483648"},
        {u"Name", Of(VT_I8, std::int64_t{-9223372036854775807}), S_OK, u"-9223372036854775807"},
        {u"Name", Of(VT_UI8, std::numeric_limits<std::uint64_t>::max()), S_OK, u"18446744073709551615"},
        {u"Name", Of(VT_R4, 0.1F), S_OK, u"0.1"},
        {u"Name", Of(VT_R8, 1e20), S_OK, u"1E+20"},
        {u"Name", Of(VT_R8, 0.1), S_OK, u"0.1"},
        {u"Name", Of(VT_BOOL, VARIANT_TRUE), S_OK, u"-1"},
        {u"Name", Of(VT_EMPTY, 0), S_OK, u""},
        {u"Name", Of(VT_NULL, 0), DISP_E_TYPEMISMATCH, u""},
#ifndef _WIN32
        // Wine converts these to negative numbers.
        {u"Version", Of(VT_UI4, std::uint32_t{2147483648}), DISP_E_OVERFLOW, u""},
        {u"Version", Of(VT_UINT, std::uint32_t{4294967295}), DISP_E_OVERFLOW, u""},
#endif
        {u"Name", Of(VT_ERROR, DISP_E_PARAMNOTFOUND), DISP_E_TYPEMISMATCH, u""},
    };
    for (const auto& c : cases)
    {
        SCOPED_TRACE(std::string(c.property.begin(), c.property.end()) + " row " +
                     std::to_string(&c - cases));
        const auto material = New<_Material>();
        Variant given;
        static_cast<VARIANT&>(given) = c.given;
        EXPECT_EQ(Call(material.Get(), c.property, kPut, {&given}), c.status);
        VARIANT reference = ReferenceTo(given);
        EXPECT_EQ(Call(material.Get(), c.property, kPut, {&reference}), c.status);
        if (FAILED(c.status))
            continue;
        Variant stored;
        ASSERT_EQ(Call(material.Get(), c.property, kGet, {}, &stored), S_OK);
        EXPECT_EQ(Call(material.Get(), u"Name", kPut, {&stored}), S_OK);
        EXPECT_EQ(ReadText(material, &_Material::get_Name), c.text);
    }
}

TEST(ComponentCalls, UnsetObjectsByEmptyAndNull)
{
    for (const VARTYPE type :
         {VARTYPE{VT_EMPTY}, VARTYPE{VT_NULL}, VARTYPE{VT_DISPATCH}, VARTYPE{VT_UNKNOWN}})
    {
        SCOPED_TRACE(type);
        const auto chunk = New<_Chunk>();
        VARIANT nothing = Of(type, static_cast<void*>(nullptr));
        EXPECT_TRUE(ReadObject(chunk, &_Chunk::get_Material));
        EXPECT_EQ(Call(chunk.Get(), u"Material", kPut, {&nothing}), S_OK);
        EXPECT_FALSE(ReadObject(chunk, &_Chunk::get_Material));
        VARIANT reference = ReferenceTo(nothing);
        EXPECT_EQ(Call(chunk.Get(), u"Geometry", kPut, {&reference}), S_OK);
        EXPECT_FALSE(ReadObject(chunk, &_Chunk::get_Geometry));
    }
}

TEST(ComponentCalls, ReportWhatFailedBySlotAndByName)
{
    const TempFolder folder;
    folder.Write("short.im", "JIRF");
    const auto mesh = New<_Mesh>();
    const Text path(folder.Name(u"short.im"));
    VARIANT_BOOL isLoaded = VARIANT_TRUE;
    EXPECT_EQ(mesh->Load(path.Get(), &isLoaded), DISP_E_BADINDEX);
    const std::u16string text = TakenError();
    EXPECT_NE(text.find(u"ZLMIM.Mesh: ", 0), text.npos) << ToUtf8(text);
    EXPECT_NE(text.find(u"4 bytes at 8"), text.npos) << ToUtf8(text);
    EXPECT_EQ(TakenError(), u"none");

    const Variant name(path.Copy());
    RawCall call({name});
    EXPECT_EQ(call.Invoke(mesh.Get(), IdOf(mesh.Get(), u"Load"), kMethod), DISP_E_EXCEPTION);
    EXPECT_EQ(call.exception.scode, ScriptError(9));
    EXPECT_EQ(call.exception.wCode, 0);
    EXPECT_EQ(Text::Adopt(call.exception.bstrSource).Copy() + u": " +
                  Text::Adopt(call.exception.bstrDescription).Copy(),
              text);
    EXPECT_EQ(call.exception.bstrHelpFile, nullptr);
    EXPECT_EQ(TakenError(), u"none");
    // If the caller passes no EXCEPINFO, the text is the thread's error.
    DISPPARAMS parameters{call.arguments.data(), nullptr, 1, 0};
    EXPECT_EQ(mesh->Invoke(IdOf(mesh.Get(), u"Load"), kNoInterface, 0, kMethod, &parameters, nullptr, nullptr,
                           nullptr),
              DISP_E_EXCEPTION);
    EXPECT_EQ(TakenError(), text);

    const auto bone = New<_Bone>();
    EXPECT_EQ(bone->get_Version(nullptr), E_POINTER);
    EXPECT_EQ(TakenError(), u"ZLMIM.Bone: a null pointer where the result belongs");
    EXPECT_EQ(bone->put_Position(nullptr), E_POINTER);
    EXPECT_EQ(TakenError(), u"ZLMIM.Bone: a null pointer where an argument is needed");
    EXPECT_EQ(bone->putref_Parent(reinterpret_cast<_Bone*>(mesh.Get())), E_INVALIDARG);
    EXPECT_EQ(TakenError(), u"ZLMIM.Bone: an object of another class or of another module");
    const auto list = ReadObject(bone, &_Bone::get_Children);
    Variant number(LONG{1});
    Variant entry;
    EXPECT_EQ(list->Item(&number, &entry), DISP_E_BADINDEX);
    EXPECT_EQ(TakenError(), u"ZLMIM.Collection: no entry 1 among 0");
    const Variant wrong(std::u16string_view(u"x"));
    EXPECT_EQ(RawCall({wrong}, {DISPID_PROPERTYPUT}).Invoke(bone.Get(), IdOf(bone.Get(), u"Version"), kPut),
              DISP_E_TYPEMISMATCH);
    EXPECT_EQ(TakenError(), u"ZLMIM.Bone: Version: argument value must be long");

    Pointer<ISupportErrorInfo> support;
    ASSERT_EQ(bone->QueryInterface(Component::kISupportErrorInfo, support.OutAny()), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(kInterfaceId<_Bone>), S_OK);
    EXPECT_EQ(support->InterfaceSupportsErrorInfo(kInterfaceId<_Mesh>), S_FALSE);
    Pointer<_Bone> same;
    ASSERT_EQ(support->QueryInterface(kInterfaceId<_Bone>, same.OutAny()), S_OK);
    EXPECT_EQ(same.Get(), bone.Get());
}

TEST(ComponentCalls, HaveAStatusAndATextForEachException)
{
    const struct
    {
        std::function<void()> fail;
        HRESULT status;
        std::u16string_view text;
    } cases[] = {
        {[] { throw BoundsError("bounds", 1); }, DISP_E_BADINDEX, u"bounds"},
        {[] { throw OverflowError("sum", 1); }, DISP_E_OVERFLOW, u"sum"},
        {[] { throw FileSystemError(FileSystemError::Code::NoPermission, u"a\u00E4"); },
         static_cast<HRESULT>(0x800A0046), u"a\u00E4: no permission (70)"},
        {[] { throw std::bad_alloc(); }, E_OUTOFMEMORY, u"out of memory"},
        {[] { throw std::invalid_argument("argument"); }, E_INVALIDARG, u"argument"},
        {[] { throw std::runtime_error("not UTF-8: \xE4"); }, E_FAIL, u"not UTF-8: \u00E4"},
        {[] { throw 1; }, E_FAIL, u"unknown failure"},
        {[] {
             throw Component::Failure{E_NOTIMPL, "failure"};
         },
         E_NOTIMPL, u"failure"},
    };
    for (const auto& c : cases)
    {
        EXPECT_EQ(Component::Guarded(c.fail, Component::Classes()[0]), c.status);
        EXCEPINFO exception{};
        Component::TakeError(exception);
        EXPECT_EQ(Text::Adopt(exception.bstrSource).Copy(), u"ZLMIM.anim");
        EXPECT_EQ(Text::Adopt(exception.bstrDescription).Copy(), c.text);
    }
}

} // namespace
} // namespace ZLMIM::Host
