#!/usr/bin/env python3
"""Writes the seed corpora of the fuzz harnesses: a few whole bodies per command, plus every
XML or JSON text the test suite's sources hold (tests/*.cpp), each behind the header bytes
its harness reads first."""
import glob
import hashlib
import os
import re
import struct
import sys

ROUTER_COMMANDS = [18699, 18731, 18749, 18829, 18843, 18863, 19588, 19606, 19917, 10380,
                   19591, 13451, 0, 1, 19592, 19596, 20000, -1, 0x7fffffff]
XML_COMMANDS = [18699, 18731, 18749, 18829, 18843, 19588, 19917, 10380]
JSON_COMMANDS = [18863, 19606, 19591]
REQ = '<?xml version="1.0" encoding="UTF-8"?><Request>%s</Request>'
RSP = '<?xml version="1.0" encoding="UTF-8"?><Response><Result>%d</Result>%s</Response>'

ROUTER = {
    18699: REQ % '<Switch Type="614" Enable="1" Channel="2"/>',
    18731: REQ % ('<Enable>1</Enable><Actor Channel="0" PlanType="17"/>'
                  '<Date Weekday="2"><Plan B="07:30" E="08:00" EventArg="mode:3"/></Date>'),
    18749: REQ % ('<Position>90</Position><Line X1="0.5" Y1="0.1" X2="0.9" Y2="0.1"/>'
                  '<Direction X1="0.5" Y1="0.5" X2="0.5" Y2="0.9"/><Interval>5</Interval>'),
    18829: REQ % '<Type>device_bell</Type><Value>{"Type":1,"CustomRingIndex":2,"Volume":60}</Value>',
    18843: REQ % '<Info Index="3" Type="1" Name="hello" Url="http://example.invalid/v.mp3" CustomVoice="1"/>',
    18863: '{"subserial":"CH0000000001"}',
    19588: REQ % '<Info Channel="1" Type="2"/>',
    19606: '{"operType":2,"channel":3,"videoUrl":["http://a.invalid/1","http://a.invalid/2"]}',
    19917: REQ % '<Enable>1</Enable><Time>30</Time><DevSerial>DB0000000001</DevSerial><Pwd>ABCDEF</Pwd>',
    10380: RSP % (1048585, '<DevInfo><SubSeral>DS1</SubSeral><Domain>d.example</Domain><Status>1</Status>'
                           '<NatIP>1.2.3.4</NatIP><LocalIP>10.0.0.2</LocalIP>'
                           '<Port Type="http" NatPort="8080" LocalPort="80"/></DevInfo>'),
    19591: '{"Result":0}',
}

# special-sim's device log reader: the module's own lines at level 4 (a report, a framed
# command and its answer, a raw command, a sleep drop, the unbind answer, a JSON report),
# then the same behind a kernel timestamp and a syslog head, with Windows line ends.
DEVICE_LOG = ('[DEBUG] special_extend_data_route_cb 0\n[ERROR] s:305e\n[INFO] \n'
              '<?xml version="1.0" encoding="UTF-8"?><Request><DevSerial>DS1</DevSerial>'
              '<Status Type="ICR" Value="1"></Status></Request>\n'
              '[ERROR] R:498d\n[INFO] xml: <Request><Type>OneClickMute</Type><Value>1</Value>'
              '<UserDefine MsgSeq="106"></UserDefine></Request>\n'
              '[ERROR] s:498e\n[INFO] \n<Response><Result>0</Result></Response>\n'
              '[ERROR] R:4c92\n[ERROR] R:498d\n[DEBUG] preview: device sleep!\n'
              '[ERROR] R:4c87\n[INFO] {"Result":0}\n[ERROR] R:49af\n[INFO] xml: {"subserial":"CH1"}\n'
              '[ERROR] s:49b0\n[INFO] \n\n[ERROR] s:30a1\n[INFO] \n{\n\t"subserial":\t"DS1"\n}\n')

RAW_LITERAL = re.compile(r'R"([^(\s]*)\((.*?)\)\1"', re.S)
PLAIN_LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')


def test_texts(root):
    """XML and JSON texts written in the test sources, as raw or plain string literals."""
    texts = set()
    for path in sorted(glob.glob(os.path.join(root, 'tests', '*.cpp'))):
        with open(path, encoding='utf-8') as f:
            source = f.read()
        for m in RAW_LITERAL.finditer(source):
            texts.add(m.group(2))
        for m in PLAIN_LITERAL.finditer(RAW_LITERAL.sub('', source)):
            try:
                texts.add(m.group(1).encode().decode('unicode_escape'))
            except UnicodeDecodeError:
                pass
    return sorted(t for t in texts if re.search(r'<[A-Za-z?]', t) or t.lstrip()[:1] in ('{', '['))


def write(folder, data):
    os.makedirs(folder, exist_ok=True)
    name = hashlib.sha1(data).hexdigest()[:16]
    with open(os.path.join(folder, name), 'wb') as f:
        f.write(data)


def router_seed(cmd, body):
    return bytes([ROUTER_COMMANDS.index(cmd)]) + struct.pack('>I', 7) + b'\x01' + body


def main(out):
    router, answers, shadow = (os.path.join(out, n) for n in ('router', 'answers', 'shadow'))
    for cmd, body in ROUTER.items():
        write(router, router_seed(cmd, body.encode()))
        write(router, router_seed(cmd, body.encode()[: len(body) // 2]))
    write(answers, b'\x00' + struct.pack('>I', 1) + ROUTER[10380].encode())
    write(answers, b'\x01' + struct.pack('>I', 1) + ROUTER[19591].encode())
    units = ('[{"channel":1,"subserial":"CH1","baseserial":"DS1","newbase":"DS2","pwd":"k"},'
             '{"channel":2,"subserial":"CH2","baseserial":"DS1"}]')
    write(shadow, b'\x04\x40\x00' + units.encode())
    write(shadow, b'\x03\x40\x00' + units.encode())
    status = os.path.join(out, 'status')
    write(status, b'\xff\xff\xff\xff' + bytes(64))
    write(status, b'\x00\x00\x00\x01' + b'\x01' * 64)
    write(status, b'\xc0\x00\x00\x00' + bytes([0, 2, 0, 0, 0]) + b'A' * 200)

    fromlog = os.path.join(out, 'fromlog')
    lines = DEVICE_LOG.splitlines()
    write(fromlog, DEVICE_LOG.encode())
    write(fromlog, ''.join('[%5d.%06d] %s\n' % (100 + i, i, l) for i, l in enumerate(lines)).encode())
    write(fromlog, ''.join('Nov 24 10:00:01 cam app[123]: %s\r\n' % l for l in lines).encode())
    write(fromlog, b'M' + DEVICE_LOG.encode())
    write(fromlog, b'T' + DEVICE_LOG.encode())

    root = os.path.join(os.path.dirname(os.path.abspath(__file__)), '..')
    for text in test_texts(root):
        data = text.encode()
        if text.lstrip().startswith('['):
            write(shadow, b'\x04\x40\x00' + data)
        elif text.lstrip().startswith('{'):
            for cmd in JSON_COMMANDS:
                write(router, router_seed(cmd, data))
            write(answers, b'\x01' + struct.pack('>I', 1) + data)
        else:
            whole = data if re.search(r'<(\?xml|Request|Response)', text) else (REQ % text).encode()
            for cmd in XML_COMMANDS:
                write(router, router_seed(cmd, whole))
            write(answers, b'\x00' + struct.pack('>I', 1) + whole)


if __name__ == '__main__':
    main(sys.argv[1] if len(sys.argv) > 1 else 'fuzz/seeds')
