// Change hints: stateless singletons whose run-time class says what changed in a scene and which
// part of the system has to react. A receiver classifies a hint with dynamic_cast, so a more derived
// hint also counts as each of its bases (a UserContentChange is an EditChange).
#pragma once

namespace Tavi {

// The root of the hint tree. It is never instantiated on its own.
class Hint
{
public:
    virtual ~Hint();

    Hint(Hint const &) = delete;
    Hint &operator=(Hint const &) = delete;

protected:
    // constexpr so that every singleton below is initialised before any code runs and can be
    // handed out safely from the initialisers of other translation units.
    constexpr Hint() = default;
};

// Part of the display is stale: the argument of damage_content.
class DamageAspect : public Hint
{
public:
    static DamageAspect const &object();

protected:
    constexpr DamageAspect() = default;

private:
    static DamageAspect const object_;
};

// Only the highlight of the selection is stale.
class DamageSelection : public DamageAspect
{
public:
    static DamageSelection const &object();

protected:
    constexpr DamageSelection() = default;

private:
    static DamageSelection const object_;
};

// Something in the scene changed: the argument of GlyphScene::changed.
class ChangedAspect : public Hint
{
public:
    static ChangedAspect const &object();

protected:
    constexpr ChangedAspect() = default;

private:
    static ChangedAspect const object_;
};

// The selection moved; the content is the same.
class SelectionChange : public ChangedAspect
{
public:
    static SelectionChange const &object();

protected:
    constexpr SelectionChange() = default;

private:
    static SelectionChange const object_;
};

// The content changed.
class EditChange : public ChangedAspect
{
public:
    static EditChange const &object();

protected:
    constexpr EditChange() = default;

private:
    static EditChange const object_;
};

// The content changed through the user.
class UserEditChange : public EditChange
{
public:
    static UserEditChange const &object();

protected:
    constexpr UserEditChange() = default;

private:
    static UserEditChange const object_;
};

// The user changed the formula.
class UserContentChange : public UserEditChange
{
public:
    static UserContentChange const &object();

protected:
    constexpr UserContentChange() = default;

private:
    static UserContentChange const object_;
};

// The user changed a style.
class UserStyleChange : public UserEditChange
{
public:
    static UserStyleChange const &object();

protected:
    constexpr UserStyleChange() = default;

private:
    static UserStyleChange const object_;
};

// The content changed through the client interface.
class DOMEditChange : public EditChange
{
public:
    static DOMEditChange const &object();

protected:
    constexpr DOMEditChange() = default;

private:
    static DOMEditChange const object_;
};

}  // namespace Tavi
