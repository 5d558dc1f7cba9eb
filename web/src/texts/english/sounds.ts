// Making sounds: trimming and recording.

export const sounds = {
  trim: {
    title: (name: string) => `Which part of “${name}”?`,
    help: 'At most 20 seconds are kept. Pull the handles, or move the part as a whole; arrow keys move a handle.',
    from: 'Begin',
    to: 'End',
    listen: 'Listen',
    kept: (part: string, length: string) => `${part} of ${length}`,
    keep: 'Keep this part',
    unseen: (why: string) => `${why}. This browser cannot show it, so that no part can be chosen here.`,
    beginning: 'Keep the first 20 s',
    tooLong: (length: string, most: string, kept: string) =>
      `it is ${length} long. Right would be: ${kept} at most, or ${most} at most to cut a part from`,
    unreadable:
      'it is longer than 20 s, and this browser cannot read it to cut a part out. Right would be: a sound of at most 20 s',
  },
  record: {
    title: 'New recording',
    open: 'Record',
    begin: 'Record',
    again: 'Again',
    stop: 'Stop',
    asking: 'The browser asks whether it may listen …',
    help: 'Speak after a touch: at most 20 seconds.',
    level: 'How loud it is',
    time: (now: string, most: string) => `${now} of ${most}`,
    name: 'Name',
    keep: 'Keep',
    nameOf: (time: string) => `Recording ${time}`,
    kept: (name: string) => `“${name}” is in the media folder`,
    hindrances: {
      insecure:
        'No microphone here: browsers lend it only to pages that came over HTTPS, or from the machine itself. Give the controller a certificate (“tls” in the house file) and open this page at https://…, or record with this device’s own recorder and drop the file here.',
      unable: 'This browser cannot record. Record with this device’s own recorder, and drop the file here.',
      denied:
        'The browser does not lend its microphone to this page. Allow it beside the address at the top, then try again.',
      none: 'This device has no microphone that the browser could use.',
      busy: 'The microphone gave nothing: another program may be using it. Try again.',
    },
  },
  speech: {
    open: 'Spoken sound',
    title: 'New spoken sound',
    edit: (name: string) => `Spoken sound “${name}”`,
    editLabel: (name: string) => `Change what ${name} says`,
    says: (text: string) => `“${text}”`,
    name: 'Name',
    text: 'What is said',
    values: 'A value of the house, as it is then:',
    speed: (percent: string) => `Speed: ${percent}`,
    chime: 'A sound in front',
    noChime: 'None',
    listen: 'Save and listen',
  },
};
