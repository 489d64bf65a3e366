// Copyright The Orvane authors. SPDX-License-Identifier: Apache-2.0
#pragma once

#include "platform/chart/ChartObjects.h"

#include <memory>

class ChartPicture;

namespace OndoChartDisplay {

/// A counted handle of an object that the scene owns. A new handle counts 1; at 0, and once the
/// scene is gone, it leads to no object. Releasing it more often changes nothing.
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

/// A counted handle of an object of a class; empty for null and for an object of another class. The
/// object lives at least as long as the handle.
template<class T>
class CSmartPtr
{
public:
    explicit CSmartPtr(CBaseObject* object)
    {
        if (object)
            m_object = std::dynamic_pointer_cast<T>(object->shared_from_this());
    }
    explicit operator bool() const { return m_object != nullptr; }
    T* operator->() const { return m_object.get(); }
    T& operator*() const { return *m_object; }
    const std::shared_ptr<T>& Shared() const { return m_object; }

private:
    std::shared_ptr<T> m_object;
};

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

class ORVANE_PLATFORM_API IObjectManagement
{
public:
    virtual ~IObjectManagement();
    /// Adds the object of a name to the drawn content, in front of what is there. An object is
    /// drawn once, however often it is added.
    /// @param group  empty; other values mean the same.
    /// @param option  0; likewise.
    virtual void AddObject(const char* name, const char* group, int option) = 0;
};

/// A chart: named objects, some of which are drawn. GUI thread only.
class ORVANE_PLATFORM_API CChartDisplay
{
public:
    CChartDisplay();
    CChartDisplay(const CChartDisplay&) = delete;
    CChartDisplay& operator=(const CChartDisplay&) = delete;
    /// Destroys the objects as well, except those that somebody holds by CSmartPtr.
    virtual ~CChartDisplay();

    CFactory& Factory();
    IObjectManagement& ObjectManager();
    /// The object of a name, or null; null answers null.
    CBaseObject* FindBaseObject(const char* name) const;
    /// Brings the picture up to date after objects were changed.
    void Update();
    /// What is drawn, as of the last Update; the display's alone to keep alive.
    std::weak_ptr<const ChartPicture> Picture() const;

private:
    struct Private;
    std::unique_ptr<Private> d;
};

} // namespace OndoChartDisplay
