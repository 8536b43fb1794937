#include "model/vocabulary.h"

#include <cstddef>

#include <gtest/gtest.h>

#include "support/mortal_object.h"

namespace quillmark {
namespace {

/// What a class of the vocabulary is told to hold.
template <typename T, std::size_t Handles, std::size_t Lists, std::size_t Texts>
struct Told {
    using Class = T;
    static constexpr PhShape kShape{Handles, Lists, Texts};
};

template <typename T>
class VocabularyClass : public testing::Test {};

using ToldClasses = testing::Types<
    Told<PhDatatype, 2, 0, 0>, Told<PhSignal, 5, 0, 0>, Told<PhSignalRef, 1, 0, 0>,
    Told<PhPort, 0, 0, 0>, Told<PhPortRef, 1, 0, 0>, Told<PhStructure, 4, 3, 0>,
    Told<PhEntityRef, 4, 0, 0>, Told<PhServiceRef, 1, 0, 0>, Told<PhParameter, 10, 0, 0>,
    Told<PhParameterRef, 2, 0, 0>, Told<PhService, 1, 1, 0>, Told<PhSocketAddress, 1, 2, 0>,
    Told<PhSocketAddressConfig, 0, 2, 0>, Told<PhSocketConnection, 3, 1, 0>,
    Told<PhConnectionBundle, 1, 2, 0>, Told<PhFrameTriggering, 5, 0, 0>, Told<PhChannel, 3, 3, 0>,
    Told<PhCluster, 1, 1, 0>, Told<PhConnector, 2, 9, 0>, Told<PhController, 2, 0, 0>,
    Told<PhEcu, 0, 4, 0>, Told<PhSystem, 0, 0, 0>, Told<PhTiming, 2, 0, 0>,
    Told<PhConnectorMapping, 2, 1, 0>, Told<PhFrameMapping, 2, 1, 0>,
    Told<PhSignalMapping, 2, 0, 0>, Told<PhScheduleTable, 1, 1, 0>,
    Told<PhScheduleTableEntry, 3, 0, 0>, Told<PhNetworkEndpoint, 0, 1, 0>,
    Told<PhNetworkAddress, 0, 0, 2>, Told<PhApplicationEndpoint, 3, 1, 0>, Told<PhEvent, 2, 0, 0>,
    Told<PhMethod, 0, 0, 0>, Told<PhField, 4, 0, 0>, Told<PhServiceInterface, 1, 3, 0>,
    Told<PhServiceInterfaceRef, 2, 0, 0>>;

TYPED_TEST_SUITE(VocabularyClass, ToldClasses);

TYPED_TEST(VocabularyClass, HasTheToldShape) {
    using Class = typename TypeParam::Class;
    EXPECT_EQ(Class::kShape.handles, TypeParam::kShape.handles);
    EXPECT_EQ(Class::kShape.lists, TypeParam::kShape.lists);
    EXPECT_EQ(Class::kShape.texts, TypeParam::kShape.texts);
    const auto object = makePh<Class>();
    EXPECT_EQ(object->handles.size(), TypeParam::kShape.handles);
    EXPECT_EQ(object->lists.size(), TypeParam::kShape.lists);
    EXPECT_EQ(object->strings.size(), TypeParam::kShape.texts);
}

TYPED_TEST(VocabularyClass, SlotsOwnWhatTheyHold) {
    int deaths = 0;
    int filled = 0;
    {
        const auto object = makePh<typename TypeParam::Class>();
        for (auto& handle : object->handles) {
            EXPECT_FALSE(handle);
            handle = PhHandle<PhObject>(new MortalObject(deaths));
            ++filled;
        }
        for (auto& list : object->lists) {
            EXPECT_TRUE(list.empty());
            list.append(PhHandle<PhObject>(new MortalObject(deaths)));
            list.append(PhHandle<PhObject>(new MortalObject(deaths)));
            filled += 2;
        }
        for (auto& text : object->strings) {
            EXPECT_TRUE(text.isNull());
            text = PhString("text");
        }
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, filled);
}

TEST(PhRange, OwnsItsHandlesAndValues) {
    int deaths = 0;
    const auto element = PhValue::ofInteger(1);
    {
        const auto range = makePh<PhRange>();
        for (auto& handle : range->handles) {
            handle = PhHandle<PhObject>(new MortalObject(deaths));
        }
        ASSERT_EQ(range->handles.size(), 2U);
        ASSERT_EQ(range->values.size(), 4U);
        for (PhValue& value : range->values) {
            EXPECT_EQ(value.type(), PhValue::Type::None);
            value.list().push_back(element);
        }
        EXPECT_EQ(element->refCount(), 5);
    }
    EXPECT_EQ(deaths, 2);
    EXPECT_EQ(element->refCount(), 1);
}

TEST(PhMlContext, KeepsTexts) {
    const auto context = makePh<PhMlContext>();
    EXPECT_TRUE(context->strings.empty());
    context->strings.emplace_back("text");
    EXPECT_EQ(context->strings.front().view(), "text");
}

}  // namespace
}  // namespace quillmark
