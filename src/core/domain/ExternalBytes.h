#pragma once

#include <QByteArray>

#include <functional>
#include <optional>

namespace fenrow {

// Bytes kept apart from the record's row (file contents, thumbnails,
// archived payloads). Opening the store learns only whether they exist;
// the bytes themselves are read the first time somebody asks for them.
class ExternalBytes {
public:
    using Loader = std::function<std::optional<QByteArray>()>;

    ExternalBytes() = default;

    bool isPresent() const { return m_present; }
    bool isLoaded() const { return m_loaded; }
    // Set by a write, cleared once the store has persisted the new value.
    bool isModified() const { return m_modified; }

    std::optional<QByteArray> value() const
    {
        if (!m_loaded) {
            m_value = m_present && m_loader ? m_loader() : std::nullopt;
            m_loaded = true;
        }
        return m_value;
    }

    void set(std::optional<QByteArray> bytes)
    {
        m_present = bytes.has_value();
        m_value = std::move(bytes);
        m_loaded = true;
        m_modified = true;
    }

    // For the persistence layer: the row says bytes exist, fetch on demand.
    void attachStored(bool present, Loader loader)
    {
        m_present = present;
        m_loader = std::move(loader);
        m_loaded = !present;
        m_value.reset();
        m_modified = false;
    }

    void markSaved() { m_modified = false; }

private:
    mutable std::optional<QByteArray> m_value;
    mutable bool m_loaded = true;
    bool m_present = false;
    bool m_modified = false;
    Loader m_loader;
};

} // namespace fenrow
