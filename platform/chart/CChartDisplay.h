// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/chart/ChartObjects.h"

#include <memory>
#include <typeinfo>

class ChartPicture;

namespace OndoChartDisplay {

/// A counted handle of an object that the scene owns. A new handle counts 1. At 0, and after the
/// scene is destroyed, it returns no object. Further releases do nothing.
class ORVANE_PLATFORM_API CPtr
{
public:
    CPtr() = default;
    explicit CPtr(std::weak_ptr<CBaseObject> object);

    void AddRef();
    void FreeRef();
    CBaseObject* CheckAndGetBaseObject() const;

private:
    std::weak_ptr<CBaseObject> m_object;
    int m_count = 0;
};

/// A handle of an object of a class, which keeps the object alive. Empty for null and for an object
/// of another class.
template<class T>
class CSmartPtr
{
public:
    explicit CSmartPtr(CBaseObject* object)
    {
        // Mostly it is of this very class, which is quicker to see.
        if (object && (typeid(*object) == typeid(T) || dynamic_cast<T*>(object)))
            m_object = object->shared_from_this();
    }
    explicit operator bool() const { return m_object != nullptr; }
    T* operator->() const { return static_cast<T*>(m_object.get()); }
    T& operator*() const { return static_cast<T&>(*m_object); }
    std::shared_ptr<T> Shared() const { return std::static_pointer_cast<T>(m_object); }

private:
    std::shared_ptr<CBaseObject> m_object; // a T
};

/// Creates the objects of a scene.
class ORVANE_PLATFORM_API CFactory
{
public:
    virtual ~CFactory();
    /// Creates an object in the scene.
    /// @param className  the CLASS of one of the classes of ChartObjects.h, or CDataArrayD::CLASS.
    /// @param name  the object's name.
    /// @return an empty handle for an unknown class, a name that is taken or empty, and null.
    virtual CPtr InternalCreateObject(const char* className, const char* name) = 0;
};

/// Decides which objects of a scene are drawn.
class ORVANE_PLATFORM_API IObjectManagement
{
public:
    virtual ~IObjectManagement();
    /// Adds the object of a name to the drawn objects, in front. An object that is drawn already
    /// keeps its place.
    /// @param group  empty; other values mean the same.
    /// @param option  0; likewise.
    virtual void AddObject(const char* name, const char* group, int option) = 0;
};

/// A chart: named objects, some of them drawn. GUI thread only.
class ORVANE_PLATFORM_API CChartDisplay
{
public:
    CChartDisplay();
    CChartDisplay(const CChartDisplay&) = delete;
    CChartDisplay& operator=(const CChartDisplay&) = delete;
    /// Destroys its objects, except those held by a CSmartPtr.
    virtual ~CChartDisplay();

    CFactory& Factory();
    IObjectManagement& ObjectManager();
    /// The object of a name, or null. The name may be null.
    CBaseObject* FindBaseObject(const char* name) const;
    /// Brings the picture up to date after objects were changed.
    void Update();
    /// The picture as of the last Update. Only the display keeps it alive.
    std::weak_ptr<const ChartPicture> Picture() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace OndoChartDisplay
