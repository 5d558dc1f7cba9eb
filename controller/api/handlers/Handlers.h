#pragma once

#include "controller/api/ApiCall.h"

namespace controller {

struct ApiContext;

/// What the operations of the table do. Each answers the call, at once or later; what it throws at once
/// becomes the answer.
namespace handlers {

using Call = const ApiCallPointer&;

void ListAnnouncements(ApiContext& context, Call call);
void AddAnnouncement(ApiContext& context, Call call);
void GetAnnouncement(ApiContext& context, Call call);
void ReplaceAnnouncement(ApiContext& context, Call call);
void RemoveAnnouncement(ApiContext& context, Call call);
void PlayAnnouncement(ApiContext& context, Call call);
void PutAnnouncementRoom(ApiContext& context, Call call);
void RemoveAnnouncementRoom(ApiContext& context, Call call);
void PutAnnouncementNavigator(ApiContext& context, Call call);
void RemoveAnnouncementNavigator(ApiContext& context, Call call);
void Dismiss(ApiContext& context, Call call);
void Stop(ApiContext& context, Call call);
void Say(ApiContext& context, Call call);
void ListQueue(ApiContext& context, Call call);
void RemoveQueued(ApiContext& context, Call call);
void MoveQueued(ApiContext& context, Call call);
void SendCommand(ApiContext& context, Call call);
void SendRequest(ApiContext& context, Call call);
void Rehearse(ApiContext& context, Call call);

void GetHouse(ApiContext& context, Call call);
void ListRooms(ApiContext& context, Call call);
void GetRoom(ApiContext& context, Call call);
void SetRoomVolume(ApiContext& context, Call call);
void TestRoom(ApiContext& context, Call call);
void ListOutputs(ApiContext& context, Call call);
void TestOutput(ApiContext& context, Call call);
void TryAnnouncement(ApiContext& context, Call call);
void ListNavigators(ApiContext& context, Call call);
void GetNavigator(ApiContext& context, Call call);
void ConfirmPopup(ApiContext& context, Call call);
void TestNavigator(ApiContext& context, Call call);
void WatchNavigator(ApiContext& context, Call call);
void ListVariables(ApiContext& context, Call call);
void GetVariable(ApiContext& context, Call call);
void SetVariable(ApiContext& context, Call call);

void ListMedia(ApiContext& context, Call call);
void PutLoudness(ApiContext& context, const ApiCallPointer& call);
void PutMedia(ApiContext& context, Call call);
void GetMedia(ApiContext& context, Call call);
void GetOneTimeSound(ApiContext& context, Call call);
void GetThumbnail(ApiContext& context, Call call);
void RemoveMedia(ApiContext& context, Call call);
void PutSpeech(ApiContext& context, Call call);
void ListVoices(ApiContext& context, Call call);

void GetStatus(ApiContext& context, Call call);
void GetHistory(ApiContext& context, Call call);
void WatchEvents(ApiContext& context, Call call);
void ListRecentEvents(ApiContext& context, Call call);
void GiveTicket(ApiContext& context, Call call);
void ListOperations(ApiContext& context, Call call);
void DescribeApi(ApiContext& context, Call call);
void GetHealth(ApiContext& context, Call call);
void GetMetrics(ApiContext& context, Call call);

} // namespace handlers

} // namespace controller
