#include "model/ph_object.h"

#include <utility>

#include <gtest/gtest.h>

#include "support/mortal_object.h"

namespace quillmark {
namespace {

TEST(PhObject, NeverTakenDiesAtItsFirstRelease) {
    int deaths = 0;
    auto* object = new MortalObject(deaths);
    EXPECT_EQ(object->refCount(), 0);
    object->release();
    EXPECT_EQ(deaths, 1);
}

TEST(PhObject, SurvivesUntilTheLastReferenceGoes) {
    int deaths = 0;
    auto* object = new MortalObject(deaths);
    object->addRef();
    object->addRef();
    EXPECT_EQ(object->refCount(), 2);
    object->release();
    EXPECT_EQ(object->refCount(), 1);
    EXPECT_EQ(deaths, 0);
    object->release();
    EXPECT_EQ(deaths, 1);
}

TEST(PhObject, IdentifiersAreSerial) {
    int deaths = 0;
    const auto first = makePh<MortalObject>(deaths);
    const auto second = makePh<MortalObject>(deaths, PhClass::Group);
    EXPECT_EQ(second->objectId(), first->objectId() + 1);
}

TEST(PhObject, CarriesItsClassCode) {
    int deaths = 0;
    EXPECT_EQ(makePh<MortalObject>(deaths, PhClass::Group)->kind(), PhClass::Group);
    EXPECT_EQ(makePh<MortalObject>(deaths, PhClass::Entity)->kind(), PhClass::Entity);
}

TEST(PhObject, TextsAreNullUntilSetAndThenReplaced) {
    int deaths = 0;
    const auto object = makePh<MortalObject>(deaths);
    EXPECT_TRUE(object->name().isNull());
    EXPECT_TRUE(object->longIdentifier().isNull());
    object->setName(PhString("a"));
    object->setLongIdentifier(PhString("first"));
    const PhString shared("b");
    object->setName(shared);
    EXPECT_EQ(object->name().text(), shared.text());
    EXPECT_EQ(object->longIdentifier().view(), "first");
}

TEST(PhObject, MarksAreIndependent) {
    int deaths = 0;
    const auto placeholder = makePh<MortalObject>(deaths);
    EXPECT_FALSE(placeholder->isPlaceholder());
    EXPECT_FALSE(placeholder->isUnresolved());
    placeholder->markPlaceholder();
    EXPECT_TRUE(placeholder->isPlaceholder());
    EXPECT_FALSE(placeholder->isUnresolved());
    placeholder->markUnresolved();
    EXPECT_TRUE(placeholder->isPlaceholder());
    EXPECT_TRUE(placeholder->isUnresolved());

    const auto unresolved = makePh<MortalObject>(deaths);
    unresolved->markUnresolved();
    EXPECT_FALSE(unresolved->isPlaceholder());
}

TEST(PhObject, HasTwoListsOfFreeTexts) {
    int deaths = 0;
    const auto object = makePh<MortalObject>(deaths);
    EXPECT_TRUE(object->texts(0).empty());
    object->texts(0).emplace_back("a");
    object->texts(1).emplace_back("b");
    object->texts(1).emplace_back("c");
    EXPECT_EQ(object->texts(0).size(), 1U);
    ASSERT_EQ(object->texts(1).size(), 2U);
    EXPECT_EQ(object->texts(1)[1].view(), "c");
}

TEST(PhHandle, ObjectDiesWithItsLastHandle) {
    int deaths = 0;
    {
        const auto first = makePh<MortalObject>(deaths);
        EXPECT_EQ(first->refCount(), 1);
        {
            const PhHandle<MortalObject> second = first;
            EXPECT_EQ(first->refCount(), 2);
            EXPECT_EQ(second, first);
        }
        EXPECT_EQ(first->refCount(), 1);
        EXPECT_EQ(deaths, 0);
    }
    EXPECT_EQ(deaths, 1);
}

TEST(PhHandle, AssignmentReleasesTheOldObject) {
    int deaths = 0;
    auto handle = makePh<MortalObject>(deaths);
    const auto other = makePh<MortalObject>(deaths);
    handle = other;
    EXPECT_EQ(deaths, 1);
    EXPECT_EQ(other->refCount(), 2);
    handle = PhHandle<MortalObject>();
    EXPECT_FALSE(handle);
    EXPECT_EQ(other->refCount(), 1);
}

TEST(PhHandle, AssignmentToItselfKeepsTheObject) {
    int deaths = 0;
    auto handle = makePh<MortalObject>(deaths);
    const auto& alias = handle;
    handle = alias;
    EXPECT_EQ(deaths, 0);
    EXPECT_EQ(handle->refCount(), 1);
}

TEST(PhHandle, MovingTakesTheReferenceAlong) {
    int deaths = 0;
    auto first = makePh<MortalObject>(deaths);
    const PhHandle<MortalObject> second = std::move(first);
    EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(second->refCount(), 1);
}

TEST(PhHandle, EmptyHandlesAreEqual) {
    int deaths = 0;
    EXPECT_EQ(PhHandle<MortalObject>(), PhHandle<MortalObject>());
    EXPECT_EQ(PhHandle<MortalObject>().get(), nullptr);
    EXPECT_FALSE(makePh<MortalObject>(deaths) == makePh<MortalObject>(deaths));
}

}  // namespace
}  // namespace quillmark
