#include "examples/recorder-desktop/desktoppresses.h"

#include <QDateTime>
#include <QFile>

#include <unistd.h>
#include <xcb/res.h>

#include <cstring>
#include <memory>
#include <string_view>

namespace desktop {

namespace {

struct freeing {
    void operator()(void* reply) const { std::free(reply); }
};

/// What a request came to; null when it failed, as windows vanish.
template <class Reply, class Cookie>
std::unique_ptr<Reply, freeing> answer(Reply* (*take)(xcb_connection_t*, Cookie,
                                                      xcb_generic_error_t**),
                                       xcb_connection_t* from, Cookie asked) {
    return std::unique_ptr<Reply, freeing>(take(from, asked, nullptr));
}

/// Up to four numbers.
QList<quint32> numbersOf(xcb_connection_t* from, xcb_window_t of, xcb_atom_t name) {
    const auto has =
        answer(xcb_get_property_reply, from, xcb_get_property(from, 0, of, name, 0, 0, 4));
    if (!has || has->format != 32)
        return {};
    const auto* first = static_cast<const quint32*>(xcb_get_property_value(has.get()));
    return {first, first + has->value_len};
}

xcb_window_t root(xcb_connection_t* of) {
    return xcb_setup_roots_iterator(xcb_get_setup(of)).data->root;
}

QRect place(xcb_connection_t* from, xcb_window_t of) {
    const auto size = answer(xcb_get_geometry_reply, from, xcb_get_geometry(from, of));
    const auto at = answer(xcb_translate_coordinates_reply, from,
                           xcb_translate_coordinates(from, of, root(from), 0, 0));
    return size && at ? QRect(at->dst_x, at->dst_y, size->width, size->height) : QRect();
}

/// As the X server knows it, whatever the program says.
qint64 ownerOf(xcb_connection_t* from, xcb_window_t window) {
    const xcb_res_client_id_spec_t what{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
    const auto ids =
        answer(xcb_res_query_client_ids_reply, from, xcb_res_query_client_ids(from, 1, &what));
    if (!ids || ids->num_ids == 0)
        return 0;
    const auto first = xcb_res_query_client_ids_ids_iterator(ids.get());
    const bool isTold = xcb_res_client_id_value_value_length(first.data) > 0;
    return isTold ? *xcb_res_client_id_value_value(first.data) : 0;
}

qint64 parentOf(qint64 process) {
    QFile file(QStringLiteral("/proc/%1/stat").arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray all = file.readAll(); // the name, in brackets, may hold anything
    return all.mid(all.lastIndexOf(')') + 1).simplified().split(' ').value(1).toLongLong();
}

} // namespace

bool is_descendant(qint64 process) {
    while (process > 1 && process != getpid())
        process = parentOf(process);
    return process == getpid();
}

Presses::Presses()
    : mAsking(xcb_connect(nullptr, nullptr))
    , mHearing(xcb_connect(nullptr, nullptr)) {
    const auto* able = xcb_get_extension_data(mAsking, &xcb_record_id);
    if (!able || !able->present || xcb_connection_has_error(mHearing))
        return;
    xcb_record_range_t buttons{};
    buttons.device_events = {XCB_BUTTON_PRESS, XCB_BUTTON_RELEASE};
    const xcb_record_client_spec_t all = XCB_RECORD_CS_ALL_CLIENTS;
    constexpr std::string_view SHADOW = "_GTK_FRAME_EXTENTS";
    const auto atom = answer(xcb_intern_atom_reply, mAsking,
                             xcb_intern_atom(mAsking, 0, SHADOW.size(), SHADOW.data()));
    mShadow = atom ? atom->atom : 0;
    mContext = xcb_generate_id(mAsking);
    xcb_record_create_context(mAsking, mContext, 0, 1, 1, &all, &buttons);
    place(mAsking, root(mAsking)); // waits until that is done
    mEvents = xcb_record_enable_context(mHearing, mContext);
    mIsAble = answer(xcb_record_enable_context_reply, mHearing, mEvents) != nullptr; // it begins
}

Presses::~Presses() {
    xcb_disconnect(mHearing);
    xcb_disconnect(mAsking);
}

bool Presses::listen() {
    constexpr int END_OF_DATA = 5;
    bool isWhole = false;
    while (const auto heard = answer(xcb_record_enable_context_reply, mHearing, mEvents)) {
        isWhole = heard->category == END_OF_DATA;
        if (isWhole)
            break;
        xcb_button_press_event_t event{};
        const std::size_t events = 4UL * heard->length / sizeof event;
        for (std::size_t i = 0; i < events; ++i) {
            std::memcpy(&event, xcb_record_enable_context_data(heard.get()) + i * sizeof event,
                        sizeof event);
            if (event.detail < 4 || event.detail > 7) // the wheels
                Q_EMIT happened(describe(event));
        }
    }
    Q_EMIT ended();
    return isWhole;
}

void Presses::stop() {
    xcb_record_disable_context(mAsking, mContext);
    xcb_flush(mAsking);
}

press Presses::describe(const xcb_button_press_event_t& event) {
    press told;
    told.isDown = (event.response_type & 0x7f) == XCB_BUTTON_PRESS;
    told.button = event.detail;
    told.time = QDateTime::currentMSecsSinceEpoch();
    told.at = {event.root_x, event.root_y};
    for (xcb_window_t at = root(mAsking); at != 0 && told.process == 0;) {
        const auto under = answer(
            xcb_translate_coordinates_reply, mAsking,
            xcb_translate_coordinates(mAsking, root(mAsking), at, event.root_x, event.root_y));
        at = under ? under->child : 0;
        told.places += place(mAsking, at); // frames are the window manager's
        const qint64 owner = at == 0 ? 0 : ownerOf(mAsking, at);
        if (is_descendant(owner))
            mDescended.insert(owner);
        if (mDescended.contains(owner)) {
            told.process = owner;
            describeWindow(at, told);
        }
    }
    return told;
}

void Presses::describeWindow(xcb_window_t window, press& into) {
    const auto seen = answer(xcb_get_window_attributes_reply, mAsking,
                             xcb_get_window_attributes(mAsking, window));
    into.isPopup = seen && seen->override_redirect;
    into.places.prepend(placeWithoutShadow(window));
    xcb_window_t owner = numbersOf(mAsking, window, XCB_ATOM_WM_TRANSIENT_FOR).value(0);
    if (!into.isPopup || owner != 0)
        mOrigin = into.places.front().topLeft();
    for (int i = 0; i < 10 && owner != 0 && owner != root(mAsking); ++i) { // dialogs of dialogs
        mOrigin = placeWithoutShadow(owner).topLeft();
        owner = numbersOf(mAsking, owner, XCB_ATOM_WM_TRANSIENT_FOR).value(0);
    }
    into.origin = mOrigin;
}

QRect Presses::placeWithoutShadow(xcb_window_t of) {
    const QList<quint32> margins = numbersOf(mAsking, of, mShadow); // left, right, top, bottom
    const auto margin = [&](int i) { return static_cast<int>(margins.value(i)); };
    return place(mAsking, of).adjusted(margin(0), margin(2), -margin(1), -margin(3));
}

} // namespace desktop
